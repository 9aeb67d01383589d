#include "hosts/tui/KeyDecoder.h"

#include <gtest/gtest.h>

namespace tui {
namespace {

using forms::KeyStroke;
using forms::keyStrokeFor;

constexpr int Shift = forms::vbShiftMask;
constexpr int Ctrl = forms::vbCtrlMask;
constexpr int Alt = forms::vbAltMask;
constexpr int F1 = forms::vbKeyF1;

std::string show(const std::vector<KeyStroke> &keys) {
    std::string out;
    for (const auto &k : keys) {
        out += "{" + std::to_string(k.keyCode) + "," + std::to_string(k.shift) + "," +
               std::to_string(static_cast<int>(k.character)) + "}";
    }
    return out;
}

struct Case {
    const char *bytes;
    KeyStroke key;
};

TEST(KeyDecoderTest, ControlBytesAreTheKeysTheFormsKnow) {
    const Case cases[] = {
        {"\r", {13, 0, 13}},        // Enter
        {"\n", {13, Ctrl, 10}},     // Ctrl+Enter: character 10
        {"\t", {9, 0, 0}},          // Tab: moves, types nothing
        {"\x7f", {8, 0, 8}},        // Backspace
        {"\x08", {8, 0, 8}},        // Backspace as BS
        {"\x04", {'D', Ctrl, 4}},   // Ctrl+D: character 4
        {"\x01", {'A', Ctrl, 1}},   // Ctrl+A
        {"\x1b", {27, 0, 27}},      // Escape, once nothing follows
        {"a", {'A', 0, 'a'}},       // letters with their key code
        {"A", {'A', Shift, 'A'}},   //
        {"7", {'7', 0, '7'}},       //
        {"-", {189, 0, '-'}},       // punctuation: the US key
        {"\xc3\xa9", {0, 0, U'é'}}, // UTF-8
    };
    for (const Case &c : cases) {
        EXPECT_EQ(show(KeyDecoder::decodeAll(c.bytes)), show({c.key})) << "bytes: " << c.bytes;
    }
}

TEST(KeyDecoderTest, EscapeSequencesOfNamedKeys) {
    const Case cases[] = {
        {"\x1b[A", keyStrokeFor(forms::vbKeyUp)},
        {"\x1bOB", keyStrokeFor(forms::vbKeyDown)},
        {"\x1b[1;2C", keyStrokeFor(forms::vbKeyRight, Shift)},
        {"\x1b[1;5D", keyStrokeFor(forms::vbKeyLeft, Ctrl)},
        {"\x1b[H", keyStrokeFor(forms::vbKeyHome)},
        {"\x1b[4~", keyStrokeFor(forms::vbKeyEnd)},
        {"\x1b[1~", keyStrokeFor(forms::vbKeyHome)},
        {"\x1b[5~", keyStrokeFor(forms::vbKeyPageUp)},
        {"\x1b[6~", keyStrokeFor(forms::vbKeyPageDown)},
        {"\x1b[3~", keyStrokeFor(forms::vbKeyDelete)},
        {"\x1b[2~", keyStrokeFor(forms::vbKeyInsert)},
        {"\x1b[Z", keyStrokeFor(forms::vbKeyTab, Shift)},
        {"\x1bOR", keyStrokeFor(F1 + 2)},                   // F3, xterm
        {"\x1b[13~", keyStrokeFor(F1 + 2)},                 // F3, VT
        {"\x1b[[C", keyStrokeFor(F1 + 2)},                  // F3, Linux console
        {"\x1b[1;2R", keyStrokeFor(F1 + 2, Shift)},         // Shift+F3
        {"\x1bOS", keyStrokeFor(F1 + 3)},                   // F4
        {"\x1b[21;2~", keyStrokeFor(F1 + 9, Shift)},        // Shift+F10
        {"\x1b[24~", keyStrokeFor(F1 + 11)},                // F12
        {"\x1b[29~", keyStrokeFor(keyApps)},                // the Menu key
        {"\x1b[1;3B", keyStrokeFor(forms::vbKeyDown, Alt)}, // Alt+Down
        {"\033f", keyStrokeFor('F', Alt)},                  // Alt+F: no character
        {"\x1b[13;5u", keyStrokeFor(13, Ctrl)},             // Ctrl+Enter, CSI u
        {"\x1b[27;5;13~", keyStrokeFor(13, Ctrl)},          // Ctrl+Enter, modifyOtherKeys
        {"\x1bOM", keyStrokeFor(13)},                       // keypad Enter
    };
    for (const Case &c : cases) {
        EXPECT_EQ(show(KeyDecoder::decodeAll(c.bytes)), show({c.key}))
            << "bytes: \\e" << (c.bytes + 1);
    }
    EXPECT_EQ(keyStrokeFor(13, Ctrl).character, 10u);
}

TEST(KeyDecoderTest, UnknownSequencesAreSkippedWhole) {
    auto keys = KeyDecoder::decodeAll("\x1b[<0;10;5M"
                                      "a"
                                      "\x1b[200~"
                                      "b"
                                      "\x1b[?1;2c"
                                      "c");
    EXPECT_EQ(show(keys), show({keyStrokeFor('A'), keyStrokeFor('B'), keyStrokeFor('C')}));
}

TEST(KeyDecoderTest, EscapeBeforeAControlByteStaysEscape) {
    auto keys = KeyDecoder::decodeAll("\x1b\r\x1b\x1b");
    EXPECT_EQ(show(keys),
              show({keyStrokeFor(27), keyStrokeFor(13), keyStrokeFor(27), keyStrokeFor(27)}));
}

TEST(KeyDecoderTest, AScannerBurstComesOutWholeHoweverTheReadsSplitIt) {
    const std::string burst = "8901234567890\r"
                              "4006381333931\r";
    std::vector<KeyStroke> expected = KeyDecoder::decodeAll(burst);
    ASSERT_EQ(expected.size(), burst.size());
    for (std::size_t cut = 1; cut < burst.size(); ++cut) {
        KeyDecoder d;
        d.feed(burst.substr(0, cut));
        auto keys = d.take();
        d.feed(burst.substr(cut));
        auto rest = d.take();
        keys.insert(keys.end(), rest.begin(), rest.end());
        EXPECT_FALSE(d.pending());
        EXPECT_EQ(show(keys), show(expected)) << "cut at " << cut;
    }
}

TEST(KeyDecoderTest, SplitSequencesWaitForTheirRest) {
    KeyDecoder d;
    d.feed("x\x1b[2");
    EXPECT_EQ(show(d.take()), show({keyStrokeFor('X')}));
    EXPECT_TRUE(d.pending()) << "half a Page Up";
    d.feed("1;2~\xe2\x82");
    EXPECT_EQ(show(d.take()), show({keyStrokeFor(F1 + 9, Shift)}));
    EXPECT_TRUE(d.pending()) << "half of a euro sign";
    d.feed("\xac");
    EXPECT_EQ(show(d.take()), show({{0, 0, U'€'}}));
    EXPECT_FALSE(d.pending());

    d.feed("\x1b");
    EXPECT_TRUE(d.take().empty()) << "a lone ESC may begin a longer key";
    d.flush();
    EXPECT_EQ(show(d.take()), show({keyStrokeFor(27)})) << "no rest came: Escape";
}

TEST(KeyDecoderTest, HostKeysAreRecognised) {
    EXPECT_TRUE(isContextMenuKey(KeyDecoder::decodeAll("\x1b[21;2~").at(0)));
    EXPECT_TRUE(isContextMenuKey(KeyDecoder::decodeAll("\x1b[29~").at(0)));
    EXPECT_FALSE(isContextMenuKey(KeyDecoder::decodeAll("\x1b[21~").at(0))) << "plain F10";
    EXPECT_TRUE(isDropDownKey(KeyDecoder::decodeAll("\x1bOS").at(0)));
    EXPECT_TRUE(isDropDownKey(KeyDecoder::decodeAll("\x1b[1;3B").at(0)));
    EXPECT_FALSE(isDropDownKey(KeyDecoder::decodeAll("\x1b[B").at(0)));
    EXPECT_TRUE(isInterruptKey(KeyDecoder::decodeAll("\x03").at(0)));
    EXPECT_FALSE(isInterruptKey(KeyDecoder::decodeAll("c").at(0)));
}

} // namespace
} // namespace tui
