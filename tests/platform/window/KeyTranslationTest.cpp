#include "platform/window/KeyTranslation.h"
#include "platform/window/Pugl.h"

#include <gtest/gtest.h>

#include <utility>

namespace platform {
namespace {

TEST(KeyTranslation, KnowsTheKeysThatViewsKnow) {
    const std::pair<std::uint32_t, UIKey> pairs[] = {{PUGL_KEY_BACKSPACE, UIKey::backspace},
                                                     {'\t', UIKey::tab},
                                                     {'\r', UIKey::enter},
                                                     {PUGL_KEY_ESCAPE, UIKey::escape},
                                                     {PUGL_KEY_DELETE, UIKey::deleteForward},
                                                     {PUGL_KEY_LEFT, UIKey::left},
                                                     {PUGL_KEY_RIGHT, UIKey::right},
                                                     {PUGL_KEY_UP, UIKey::up},
                                                     {PUGL_KEY_DOWN, UIKey::down},
                                                     {PUGL_KEY_PAGE_UP, UIKey::pageUp},
                                                     {PUGL_KEY_PAGE_DOWN, UIKey::pageDown},
                                                     {PUGL_KEY_HOME, UIKey::home},
                                                     {PUGL_KEY_END, UIKey::end}};
    for (const auto& [code, key] : pairs) {
        const auto made = specialKey(code, 0);
        ASSERT_TRUE(made) << code;
        EXPECT_EQ(made->key, key) << code;
    }
}

TEST(KeyTranslation, LeavesLettersToTheirText) {
    EXPECT_FALSE(specialKey('a', 0));
    EXPECT_FALSE(specialKey(PUGL_KEY_F1, 0));
    EXPECT_FALSE(specialKey(0, 0));
}

TEST(KeyTranslation, CarriesTheModifiers) {
    const auto made = specialKey('\t', PUGL_MOD_SHIFT | PUGL_MOD_CTRL | PUGL_MOD_ALT | PUGL_MOD_SUPER);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->modifierFlags, UIKeyModifierShift | UIKeyModifierControl | UIKeyModifierAlternate);
}

TEST(KeyTranslation, TakesTextAsItIsWritten) {
    const auto made = textKey("\xC3\xA4", PUGL_MOD_SHIFT);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->key, UIKey::text);
    EXPECT_EQ(made->text, "\xC3\xA4");
    EXPECT_TRUE(made->has(UIKeyModifierShift));
}

TEST(KeyTranslation, TakesNoControlCharacterForText) {
    for (const char* text : {"", "\r", "\t", "\b", "\x1B", "\x7F", "\x01"}) {
        EXPECT_FALSE(textKey(text, 0));
    }
}

} // namespace
} // namespace platform
