#include "forms/MsgBox.h"

#include "forms/Errors.h"
#include "forms/Screen.h"
#include "forms/Ui.h"

#include <algorithm>

namespace forms {

int MsgBox(Screen &screen, std::string_view prompt, int buttons) {
    return MsgBox(screen, prompt, buttons, std::string_view{});
}

int MsgBox(Screen &screen, std::string_view prompt, int buttons, std::string_view title) {
    // An empty title is a title left out: the old MsgBox showed the
    // application's title for both.
    int answer = title.empty() ? screen.ui().untitledMsgBox(prompt, buttons, screen.appTitle())
                               : screen.ui().msgBox(prompt, buttons, title);
    std::vector<int> offered = msgBoxAnswers(buttons);
    if (std::find(offered.begin(), offered.end(), answer) == offered.end()) {
        throw errors::invalidProcedureCall();
    }
    return answer;
}

std::vector<int> msgBoxAnswers(int buttons) {
    switch (buttons & 0x7) {
    case vbOKCancel:
        return {vbOK, vbCancel};
    case vbAbortRetryIgnore:
        return {vbAbort, vbRetry, vbIgnore};
    case vbYesNoCancel:
        return {vbYes, vbNo, vbCancel};
    case vbYesNo:
        return {vbYes, vbNo};
    case vbRetryCancel:
        return {vbRetry, vbCancel};
    default:
        return {vbOK};
    }
}

int msgBoxDefaultAnswer(int buttons) {
    std::vector<int> offered = msgBoxAnswers(buttons);
    std::size_t which = (buttons & vbDefaultButton3) ? 2 : (buttons & vbDefaultButton2) ? 1 : 0;
    return which < offered.size() ? offered[which] : offered.front();
}

int msgBoxEscapeAnswer(int buttons) {
    std::vector<int> offered = msgBoxAnswers(buttons);
    if (std::find(offered.begin(), offered.end(), vbCancel) != offered.end()) {
        return vbCancel;
    }
    return offered.size() == 1 ? vbOK : 0;
}

int msgBoxIcon(int buttons) {
    return buttons & 0x70;
}

std::string msgBoxButtonCaption(int answer) {
    switch (answer) {
    case vbOK:
        return "OK";
    case vbCancel:
        return "Cancel";
    case vbAbort:
        return "&Abort";
    case vbRetry:
        return "&Retry";
    case vbIgnore:
        return "&Ignore";
    case vbYes:
        return "&Yes";
    case vbNo:
        return "&No";
    default:
        return "";
    }
}

} // namespace forms
