#include "platform/window/KeyTranslation.h"

#include "platform/window/Pugl.h"

namespace platform {

std::uint32_t modifierFlags(std::uint32_t puglModifiers) noexcept {
    std::uint32_t flags = UIKeyModifierNone;
    flags |= (puglModifiers & PUGL_MOD_SHIFT) != 0 ? UIKeyModifierShift : 0U;
    flags |= (puglModifiers & PUGL_MOD_CTRL) != 0 ? UIKeyModifierControl : 0U;
    flags |= (puglModifiers & PUGL_MOD_ALT) != 0 ? UIKeyModifierAlternate : 0U;
    return flags;
}

std::optional<UIKeyEvent> specialKey(std::uint32_t puglKey, std::uint32_t puglModifiers) {
    const auto made = [puglModifiers](UIKey key) {
        return UIKeyEvent{.key = key, .text = {}, .modifierFlags = modifierFlags(puglModifiers)};
    };
    switch (puglKey) {
    case PUGL_KEY_BACKSPACE:
        return made(UIKey::backspace);
    case '\t':
        return made(UIKey::tab);
    case '\r':
    case '\n':
        return made(UIKey::enter);
    case PUGL_KEY_ESCAPE:
        return made(UIKey::escape);
    case PUGL_KEY_DELETE:
        return made(UIKey::deleteForward);
    case PUGL_KEY_LEFT:
        return made(UIKey::left);
    case PUGL_KEY_RIGHT:
        return made(UIKey::right);
    case PUGL_KEY_UP:
        return made(UIKey::up);
    case PUGL_KEY_DOWN:
        return made(UIKey::down);
    case PUGL_KEY_PAGE_UP:
        return made(UIKey::pageUp);
    case PUGL_KEY_PAGE_DOWN:
        return made(UIKey::pageDown);
    case PUGL_KEY_HOME:
        return made(UIKey::home);
    case PUGL_KEY_END:
        return made(UIKey::end);
    default:
        return std::nullopt;
    }
}

std::optional<UIKeyEvent> textKey(std::string_view utf8, std::uint32_t puglModifiers) {
    if (utf8.empty()) {
        return std::nullopt;
    }
    const auto first = static_cast<unsigned char>(utf8.front());
    if (first < 0x20 || first == 0x7F) {
        return std::nullopt;
    }
    return UIKeyEvent{
        .key = UIKey::text, .text = std::string(utf8), .modifierFlags = modifierFlags(puglModifiers)};
}

} // namespace platform
