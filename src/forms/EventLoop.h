// DoEvents and SendKeys: the old runtime's calls that feed or run the event loop.
#pragma once

#include "forms/Keys.h"

#include <string_view>
#include <vector>

namespace forms {

class Screen;

/// Lets the event loop run: first the keystrokes that SendKeys queued (each
/// goes where the focus is when its turn comes), then the host's own part.
void DoEvents(Screen &screen);

/// Queues keystrokes as the old SendKeys did: they are not processed now but
/// when the event loop next runs, after the running handler has returned (or
/// at DoEvents). Understands plain characters, "~" (Enter) and the braced
/// names {TAB}, {ENTER}, {ESC}, {BACKSPACE}, {BS}, {DELETE}, {DEL}, {HOME},
/// {END}, {UP}, {DOWN}, {LEFT}, {RIGHT}, {PGUP}, {PGDN}, {F1}..{F12}, {+},
/// {^}, {%}, {~}, {{}, {}}, in any letter case, with the prefixes + (Shift),
/// ^ (Ctrl) and % (Alt). Raises 5 for text it cannot read.
void SendKeys(Screen &screen, std::string_view keys);

/// The keystrokes a SendKeys text stands for, without queueing them.
std::vector<KeyStroke> parseSendKeys(std::string_view keys);

} // namespace forms
