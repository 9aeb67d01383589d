// MsgBox: the old runtime's message box, its style numbers and answers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace forms {

class Screen;

// Button sets, icons and default-button flags of a message box style; a style
// is their sum (324 = vbYesNo + vbInformation + vbDefaultButton2).
inline constexpr int vbOKOnly = 0;
inline constexpr int vbOKCancel = 1;
inline constexpr int vbAbortRetryIgnore = 2;
inline constexpr int vbYesNoCancel = 3;
inline constexpr int vbYesNo = 4;
inline constexpr int vbRetryCancel = 5;
inline constexpr int vbCritical = 16;
inline constexpr int vbQuestion = 32;
inline constexpr int vbExclamation = 48;
inline constexpr int vbInformation = 64;
inline constexpr int vbDefaultButton1 = 0;
inline constexpr int vbDefaultButton2 = 256;
inline constexpr int vbDefaultButton3 = 512;

// Answers.
inline constexpr int vbOK = 1;
inline constexpr int vbCancel = 2;
inline constexpr int vbAbort = 3;
inline constexpr int vbRetry = 4;
inline constexpr int vbIgnore = 5;
inline constexpr int vbYes = 6;
inline constexpr int vbNo = 7;

/// Shows a message box through the host and returns the answer. Without a
/// title (or an empty one) the box carries the application's title
/// (Screen::appTitle), as the old MsgBox did when the argument was left out;
/// the host hears of it through Ui::untitledMsgBox. Raises 5 when the host
/// answers with a button that the style does not offer.
int MsgBox(Screen &screen, std::string_view prompt, int buttons = vbOKOnly);
int MsgBox(Screen &screen, std::string_view prompt, int buttons, std::string_view title);

/// The answers a style offers, in the order its buttons stand (vbYesNoCancel
/// gives 6, 7, 2).
std::vector<int> msgBoxAnswers(int buttons);
/// The answer of the style's default button (the first unless 256 or 512 say
/// otherwise); what Enter picks.
int msgBoxDefaultAnswer(int buttons);
/// The answer that Escape and the close box give: Cancel where the style has
/// one, OK for vbOKOnly, 0 when the box cannot be dismissed (Yes/No).
int msgBoxEscapeAnswer(int buttons);
/// The icon part of a style: 0, vbCritical, vbQuestion, vbExclamation or vbInformation.
int msgBoxIcon(int buttons);
/// The caption of an answer's button: "OK", "Cancel", "&Yes", "&No", ...
std::string msgBoxButtonCaption(int answer);

} // namespace forms
