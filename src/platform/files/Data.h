// A buffer of bytes.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace platform {

using Data = std::vector<std::uint8_t>;

/// The bytes of a text.
inline Data dataFromText(std::string_view source) {
    return {source.begin(), source.end()};
}

/// The bytes seen as a text; valid as long as the data.
inline std::string_view textView(const Data& data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

} // namespace platform
