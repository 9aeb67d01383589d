#include "hosts/script/KeyName.h"

#include <gtest/gtest.h>

namespace script {
namespace {

using forms::KeyStroke;

TEST(KeyNameTest, KeysGiveTheCodesAndCharactersOfTheOldKeyboard) {
    EXPECT_EQ(parseKeyName("Enter"), (KeyStroke{13, 0, 13}));
    EXPECT_EQ(parseKeyName("shift+enter"), (KeyStroke{13, forms::vbShiftMask, 13}));
    EXPECT_EQ(parseKeyName("Ctrl+Enter"), (KeyStroke{13, forms::vbCtrlMask, 10}));
    EXPECT_EQ(parseKeyName("Ctrl+D"), (KeyStroke{'D', forms::vbCtrlMask, 4}));
    EXPECT_EQ(parseKeyName("Alt+N"), (KeyStroke{'N', forms::vbAltMask, 0}));
    EXPECT_EQ(parseKeyName("Shift+Ctrl+Tab"),
              (KeyStroke{9, forms::vbShiftMask | forms::vbCtrlMask, 0}));
    EXPECT_EQ(parseKeyName("F3"), (KeyStroke{114, 0, 0}));
    EXPECT_EQ(parseKeyName("F12")->keyCode, 123);
    EXPECT_EQ(parseKeyName("Delete")->keyCode, 46);
    EXPECT_EQ(parseKeyName("Esc"), (KeyStroke{27, 0, 27}));
    EXPECT_EQ(parseKeyName("x"), (KeyStroke{'X', 0, 'x'}));
    EXPECT_EQ(parseKeyName("7"), (KeyStroke{'7', 0, '7'}));
}

TEST(KeyNameTest, UnknownNamesGiveNothing) {
    for (const char *name : {"", "F13", "F0", "Ctrl+", "Hyper+A", "Enterr", "Ctrl+F1x"}) {
        EXPECT_FALSE(parseKeyName(name).has_value()) << name;
    }
}

} // namespace
} // namespace script
