#include "hosts/cli/ParameterNames.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace qor::cli {

namespace {

// The short name nearest to `name`; empty if none shares half of the letters.
std::string closestName(std::string_view name) {
    constexpr std::string_view kPrefix = "klimiter";
    std::string wanted;
    for (const char c : name) {
        wanted += (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    }
    if (wanted.size() > kPrefix.size() && wanted.starts_with(kPrefix)) {
        wanted.erase(0, kPrefix.size());
    }
    std::string closest;
    std::size_t smallest = std::string_view::npos;
    for (const ParameterRow& row : kParameterTable) {
        const std::string_view known = row.shortName;
        const std::size_t distance = editDistance(known, wanted);
        if (distance < smallest && distance <= std::max(known.size(), wanted.size()) / 2) {
            smallest = distance;
            closest = known;
        }
    }
    return closest;
}

} // namespace

std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

Result<const ParameterRow*> findParameter(std::string_view name) {
    if (const ParameterRow* row = parameterRowNamed(name); row != nullptr) {
        return row;
    }
    std::int64_t address = 0;
    if (parseInt64(name, address)) {
        return wrongUsage("there is no parameter with the address " + shown(name) + ": addresses are 0 to " +
                          text(static_cast<std::uint64_t>(kParameterCount - 1)) + ".");
    }
    const std::string closest = closestName(name);
    return wrongUsage("there is no parameter " + shown(name) + "." +
                      (closest.empty() ? "" : " Did you mean '" + closest + "'?") +
                      " 'qor-limiter params' lists them.");
}

} // namespace qor::cli
