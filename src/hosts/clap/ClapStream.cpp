#include "hosts/clap/ClapStream.h"

#include <array>

namespace qor::clap {

bool writeAll(const clap_ostream_t* stream, std::span<const std::uint8_t> bytes) noexcept {
    if (stream == nullptr || stream->write == nullptr) {
        return false;
    }
    while (!bytes.empty()) {
        const std::int64_t written = stream->write(stream, bytes.data(), bytes.size());
        if (written <= 0 || static_cast<std::uint64_t>(written) > bytes.size()) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

std::optional<std::vector<std::uint8_t>> readAll(const clap_istream_t* stream) {
    if (stream == nullptr || stream->read == nullptr) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes;
    std::array<std::uint8_t, 4096> block{};
    for (;;) {
        const std::int64_t got = stream->read(stream, block.data(), block.size());
        if (got == 0) {
            return bytes;
        }
        if (got < 0 || static_cast<std::uint64_t>(got) > block.size() ||
            bytes.size() + static_cast<std::size_t>(got) > kLongestState) {
            return std::nullopt;
        }
        bytes.insert(bytes.end(), block.begin(), block.begin() + got);
    }
}

} // namespace qor::clap
