// The host's streams, which may take or give fewer bytes than they are asked for.
#pragma once

#include "hosts/clap/ClapHeaders.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace qor::clap {

/// More than any state of ours has; a stream that goes on beyond it is refused.
inline constexpr std::size_t kLongestState = std::size_t{1} << 20;

/// False if the stream fails, stands still, or claims more than it was given.
bool writeAll(const clap_ostream_t* stream, std::span<const std::uint8_t> bytes) noexcept;
/// Everything up to the stream's end; absent if the stream fails or is too long.
std::optional<std::vector<std::uint8_t>> readAll(const clap_istream_t* stream);

} // namespace qor::clap
