// Keys decoded with the key tables of the machine's own terminfo entries.
#include "hosts/tui/KeyDecoder.h"
#include "hosts/tui/TerminfoEntry.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#define NCURSES_WIDECHAR 1
#include <ncursesw/curses.h>
#include <ncursesw/term.h>

namespace tui {
namespace {

using forms::KeyStroke;
using forms::keyStrokeFor;

constexpr int Shift = forms::vbShiftMask;
constexpr int Ctrl = forms::vbCtrlMask;
constexpr int Alt = forms::vbAltMask;

std::string show(const std::vector<KeyStroke> &keys) {
    std::string out;
    for (const auto &k : keys) {
        out += "{" + std::to_string(k.keyCode) + "," + std::to_string(k.shift) + "," +
               std::to_string(static_cast<int>(k.character)) + "}";
    }
    return out;
}

/// The string capabilities of `term`, read here with setupterm and tigetstr
/// rather than through the code under test, so that the test follows the
/// machine's database.
std::map<std::string, std::string> capabilities(const std::string &term,
                                                const std::vector<std::string> &names) {
    int fd = ::open("/dev/null", O_WRONLY);
    int status = 0;
    TERMINAL *previous = cur_term;
    std::map<std::string, std::string> out;
    if (setupterm(term.c_str(), fd, &status) == OK) {
        for (const std::string &name : names) {
            const char *value = tigetstr(name.c_str());
            if (value != nullptr && value != reinterpret_cast<const char *>(-1)) {
                out[name] = value;
            }
        }
        del_curterm(cur_term);
    }
    set_curterm(previous);
    ::close(fd);
    return out;
}

struct Expected {
    std::string capability;
    KeyStroke key;
};

const std::vector<Expected> &expectedKeys() {
    static const std::vector<Expected> all = {
        {"kcuu1", keyStrokeFor(forms::vbKeyUp)},
        {"kcud1", keyStrokeFor(forms::vbKeyDown)},
        {"kcuf1", keyStrokeFor(forms::vbKeyRight)},
        {"kcub1", keyStrokeFor(forms::vbKeyLeft)},
        {"khome", keyStrokeFor(forms::vbKeyHome)},
        {"kend", keyStrokeFor(forms::vbKeyEnd)},
        {"kfnd", keyStrokeFor(forms::vbKeyHome)},
        {"kslt", keyStrokeFor(forms::vbKeyEnd)},
        {"kich1", keyStrokeFor(forms::vbKeyInsert)},
        {"kdch1", keyStrokeFor(forms::vbKeyDelete)},
        {"kpp", keyStrokeFor(forms::vbKeyPageUp)},
        {"knp", keyStrokeFor(forms::vbKeyPageDown)},
        {"kcbt", keyStrokeFor(forms::vbKeyTab, Shift)},
        {"kent", keyStrokeFor(forms::vbKeyReturn)},
        {"kbs", keyStrokeFor(forms::vbKeyBack)},
        {"kf1", keyStrokeFor(forms::vbKeyF1)},
        {"kf3", keyStrokeFor(forms::vbKeyF1 + 2)},
        {"kf4", keyStrokeFor(forms::vbKeyF1 + 3)},
        {"kf5", keyStrokeFor(forms::vbKeyF1 + 4)},
        {"kf10", keyStrokeFor(forms::vbKeyF1 + 9)},
        {"kf12", keyStrokeFor(forms::vbKeyF1 + 11)},
        {"kUP5", keyStrokeFor(forms::vbKeyUp, Ctrl)},
        {"kDN3", keyStrokeFor(forms::vbKeyDown, Alt)},
        {"kRIT", keyStrokeFor(forms::vbKeyRight, Shift)},
        {"kDC6", keyStrokeFor(forms::vbKeyDelete, Ctrl | Shift)},
        {"kf22", keyStrokeFor(forms::vbKeyF1 + 9, Shift)},
    };
    return all;
}

/// The capabilities each type must have for its test to mean something.
const std::map<std::string, std::vector<std::string>> &required() {
    static const std::map<std::string, std::vector<std::string>> all = {
        {"xterm-256color", {"kcuu1", "khome", "kend", "kf3", "kcbt", "kent", "kUP5", "kf22"}},
        {"screen-256color", {"kcuu1", "khome", "kend", "kf3", "kcbt"}},
        {"linux", {"kcuu1", "khome", "kend", "kf1", "kf3", "kcbt"}},
        {"vt220", {"kcuu1", "kfnd", "kslt", "kf3", "kbs"}},
    };
    return all;
}

TEST(TerminfoKeysTest, EverySequenceOfFourEntriesIsItsKeyAloneSplitOrInAStream) {
    for (const auto &[term, needed] : required()) {
        std::optional<TerminfoEntry> entry = readTerminfoEntry(term);
        ASSERT_TRUE(entry) << term << " is in ncurses-base";
        std::vector<std::string> names;
        for (const Expected &e : expectedKeys()) {
            names.push_back(e.capability);
        }
        auto caps = capabilities(term, names);
        for (const std::string &n : needed) {
            ASSERT_TRUE(caps.contains(n)) << term << " lacks " << n;
        }
        for (const Expected &e : expectedKeys()) {
            auto it = caps.find(e.capability);
            if (it == caps.end()) {
                continue;
            }
            const std::string &bytes = it->second;
            SCOPED_TRACE(term + " " + e.capability);
            // The key comes from the table, not from the hand reader behind it.
            KeyTable::Match m = entry->keys.match(bytes);
            ASSERT_TRUE(m.sequence);
            EXPECT_EQ(m.sequence->bytes, bytes);
            EXPECT_EQ(show({m.sequence->key}), show({e.key}));
            EXPECT_EQ(show(KeyDecoder::decodeAll(bytes, entry->keys)), show({e.key}));
            // Between typed characters, and one byte per read as a slow line gives them.
            EXPECT_EQ(show(KeyDecoder::decodeAll("x" + bytes + "y", entry->keys)),
                      show({forms::keyStrokeForCharacter('x'), e.key,
                            forms::keyStrokeForCharacter('y')}));
            KeyDecoder slow(entry->keys);
            for (char c : bytes) {
                slow.feed(std::string(1, c));
            }
            EXPECT_FALSE(slow.pending());
            EXPECT_EQ(show(slow.take()), show({e.key}));
        }
    }
}

TEST(TerminfoKeysTest, TheEntryDecidesWhatAHandReaderWouldGetWrong) {
    auto console = readTerminfoEntry("linux");
    ASSERT_TRUE(console);
    // The console's Shift+Tab is ESC Tab: by hand that is Escape, then Tab.
    EXPECT_EQ(show(KeyDecoder::decodeAll("\x1b\t", console->keys)),
              show({keyStrokeFor(forms::vbKeyTab, Shift)}));
    EXPECT_EQ(show(KeyDecoder::decodeAll("\x1b\t")),
              show({keyStrokeFor(forms::vbKeyEscape), keyStrokeFor(forms::vbKeyTab)}));

    // Keys terminfo has no name for are still read by hand with a table.
    auto xterm = readTerminfoEntry("xterm-256color");
    ASSERT_TRUE(xterm);
    EXPECT_EQ(show(KeyDecoder::decodeAll("\x1bn\n\x1b[27;5;13~\x1b[13;5u\x04", xterm->keys)),
              show({keyStrokeFor(forms::vbKeyA + 13, Alt), keyStrokeFor(forms::vbKeyReturn, Ctrl),
                    keyStrokeFor(forms::vbKeyReturn, Ctrl), keyStrokeFor(forms::vbKeyReturn, Ctrl),
                    keyStrokeFor(forms::vbKeyA + 3, Ctrl)}));
}

TEST(TerminfoKeysTest, APrefixOfASequenceWaitsThenIsEscapeOrAnAltKey) {
    auto vt220 = readTerminfoEntry("vt220");
    ASSERT_TRUE(vt220);
    // ESC O starts F1 to F4 ("\EOP"); when nothing follows in time it was Alt+Shift+O.
    KeyDecoder d(vt220->keys);
    d.feed("\x1bO");
    EXPECT_TRUE(d.pending());
    EXPECT_TRUE(d.take().empty());
    d.flush();
    EXPECT_EQ(show(d.take()), show({keyStrokeFor(forms::vbKeyA + 14, Alt | Shift)}));
    // A lone ESC waits too, then is the Escape key.
    d.feed("\x1b");
    EXPECT_TRUE(d.take().empty());
    d.flush();
    EXPECT_EQ(show(d.take()), show({keyStrokeFor(forms::vbKeyEscape)}));
    // A VT220's Backspace is BS, and DEL is still Backspace.
    EXPECT_EQ(show(KeyDecoder::decodeAll("\b\x7f", vt220->keys)),
              show({keyStrokeFor(forms::vbKeyBack), keyStrokeFor(forms::vbKeyBack)}));
}

TEST(TerminfoKeysTest, WhatTheEntriesSayBesideTheKeys) {
    auto xterm = readTerminfoEntry("xterm-256color");
    auto console = readTerminfoEntry("linux");
    auto dumb = readTerminfoEntry("dumb");
    ASSERT_TRUE(xterm && console && dumb);
    EXPECT_TRUE(xterm->placesCursor);
    EXPECT_TRUE(xterm->reportsModifiedKeys);
    EXPECT_EQ(xterm->keypadOn, "\x1b[?1h\x1b=");
    EXPECT_EQ(xterm->keypadOff, "\x1b[?1l\x1b>");
    EXPECT_TRUE(console->placesCursor);
    EXPECT_FALSE(console->reportsModifiedKeys);
    EXPECT_EQ(console->keypadOn, "");
    EXPECT_FALSE(dumb->placesCursor);
    // The Linux console numbers F13 and up as keys of its own, not Shift+F1.
    for (const KeySequence &s : console->keys.sequences()) {
        EXPECT_NE(s.capability, "kf13");
    }
}

TEST(TerminfoKeysTest, AnUnknownTypeHasNoEntryAndLeavesTheCurrentTerminal) {
    TERMINAL *before = cur_term;
    EXPECT_FALSE(readTerminfoEntry("nonesuch"));
    EXPECT_FALSE(readTerminfoEntry(""));
    EXPECT_EQ(cur_term, before);
    EXPECT_TRUE(readTerminfoEntry("linux"));
    EXPECT_EQ(cur_term, before);
}

TEST(KeyTableTest, LongestSequenceWinsAndLongerOnesAreWaitedFor) {
    KeyTable table({{"\x1b[1~", keyStrokeFor(forms::vbKeyHome), "khome"},
                    {"\x1b[1", keyStrokeFor(forms::vbKeyF1), "kx"},
                    {"\x1b[1~", keyStrokeFor(forms::vbKeyEnd), "kfnd"},
                    {"\x1b[11~", keyStrokeFor(forms::vbKeyF1), "kf1"}});
    EXPECT_EQ(table.sequences().size(), 3u) << "the second \\E[1~ is dropped";
    auto m = table.match("\x1b[1~abc");
    ASSERT_TRUE(m.sequence);
    EXPECT_EQ(m.sequence->capability, "khome") << "the first capability listed wins";
    EXPECT_FALSE(m.longerPossible);
    m = table.match("\x1b[1");
    ASSERT_TRUE(m.sequence);
    EXPECT_EQ(m.sequence->capability, "kx");
    EXPECT_TRUE(m.longerPossible);
    m = table.match("\x1b[");
    EXPECT_FALSE(m.sequence);
    EXPECT_TRUE(m.longerPossible);
    m = table.match("abc");
    EXPECT_FALSE(m.sequence);
    EXPECT_FALSE(m.longerPossible);
}

} // namespace
} // namespace tui
