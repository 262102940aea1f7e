// Keys as the window system names them, made into keys as the views know them.
#pragma once

#include "platform/view/UIEvent.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// Modifier bits of pugl as bits of `UIKeyModifierFlags`.
std::uint32_t modifierFlags(std::uint32_t puglModifiers) noexcept;
/// A key that means something by itself; absent for keys that only make text, or nothing.
std::optional<UIKeyEvent> specialKey(std::uint32_t puglKey, std::uint32_t puglModifiers);
/// Text that a key made; absent for control characters, which arrive as keys.
std::optional<UIKeyEvent> textKey(std::string_view utf8, std::uint32_t puglModifiers);

} // namespace platform
