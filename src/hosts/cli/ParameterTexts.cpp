#include "hosts/cli/ParameterTexts.h"

#include "hosts/cli/JsonText.h"
#include "kernel/ParameterTable.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace qor::cli {

namespace {

std::string_view unitName(AudioUnitParameterUnit unit) {
    switch (unit) {
    case AudioUnitParameterUnit::Boolean:
        return "boolean";
    case AudioUnitParameterUnit::Indexed:
        return "indexed";
    default:
        return "generic";
    }
}

std::string joinedNames(const ParameterRow& row) {
    std::string result;
    for (const char* name : row.valueNames) {
        result += result.empty() ? "" : ", ";
        result += name;
    }
    return result;
}

std::string jsonObject(const ParameterRow& row) {
    std::string values;
    for (const char* name : row.valueNames) {
        values += (values.empty() ? "" : ", ") + jsonText(name);
    }
    return "  {\"address\": " + text(row.address) + ", \"identifier\": " + jsonText(row.identifier) +
           ", \"name\": " + jsonText(row.shortName) + ",\n   \"displayName\": " + jsonText(row.displayName) +
           ", \"hostName\": " + jsonText(row.hostName) + ",\n   \"minimum\": " + text(row.minimum) +
           ", \"maximum\": " + text(row.maximum) + ", \"default\": " + text(row.defaultValue) +
           ", \"unit\": " + jsonText(unitName(row.unit)) + ",\n   \"values\": [" + values +
           "],\n   \"help\": " + jsonText(row.help) + "}";
}

} // namespace

std::string parametersAsTable() {
    constexpr std::size_t kColumns = 6;
    using Line = std::array<std::string, kColumns>;
    std::vector<Line> lines{{"ADDRESS", "NAME", "IDENTIFIER", "RANGE", "DEFAULT", "VALUES"}};
    for (const ParameterRow& row : kParameterTable) {
        lines.push_back({text(row.address), row.shortName, row.identifier,
                         text(row.minimum) + " to " + text(row.maximum), text(row.defaultValue),
                         joinedNames(row)});
    }
    std::array<std::size_t, kColumns> widths{};
    for (const Line& line : lines) {
        for (std::size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], line[i].size());
        }
    }
    std::string result;
    for (const Line& line : lines) {
        std::string row;
        for (std::size_t i = 0; i < kColumns; ++i) {
            row += line[i] + std::string(widths[i] - line[i].size() + 2, ' ');
        }
        row.erase(row.find_last_not_of(' ') + 1);
        result += row + '\n';
    }
    return result;
}

std::string parametersAsJson() {
    std::string result = "[\n";
    for (const ParameterRow& row : kParameterTable) {
        result += jsonObject(row) + (&row == &kParameterTable.back() ? "\n" : ",\n");
    }
    return result + "]\n";
}

} // namespace qor::cli
