#include "hosts/clap/ClapState.h"

#include "hosts/shared/StateChunk.h"

#include <string_view>

namespace qor::clap {

namespace {

// Two lines of one length, and nothing else is one.
constexpr std::string_view kOff = "qor-limiter clap 1 bypass 0\n";
constexpr std::string_view kOn = "qor-limiter clap 1 bypass 1\n";

} // namespace

std::vector<std::uint8_t> saveInstance(const host::UnitHost& host) {
    const std::string_view line = host.isBypassed() ? kOn : kOff;
    std::vector<std::uint8_t> bytes(line.begin(), line.end());
    const Data state = host::saveState(host);
    bytes.insert(bytes.end(), state.begin(), state.end());
    return bytes;
}

Result<void> restoreInstance(host::UnitHost& host, std::span<const std::uint8_t> bytes) {
    const std::string_view start(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const bool bypassed = start.starts_with(kOn);
    if (bypassed || start.starts_with(kOff)) {
        bytes = bytes.subspan(kOn.size());
    }
    if (Result<void> restored = host::restoreState(host, bytes); !restored) {
        return restored;
    }
    host.setBypassed(bypassed);
    return {};
}

} // namespace qor::clap
