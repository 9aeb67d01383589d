// tui::Palette: how the forms' colours and states map onto terminal cell styles.
#pragma once

#include "hosts/tui/Cell.h"

#include "forms/Colors.h"

namespace tui {

/// The terminal colour for a colour of the old platform. System colours of
/// ordinary text and faces map to the terminal's default, so the user's own
/// scheme shows; the highlight maps to blue and its text to white. A literal
/// colour maps to the basic colour nearest in hue; black, white and greys
/// (which a palette sets for ordinary text) map to the default.
Color terminalColor(forms::Color c);

/// The styles the host draws with, in one place.
namespace styles {
inline constexpr Style plain{};
inline constexpr Style title{Color::Default, Color::Default, attrReverse | attrBold};
inline constexpr Style inactiveTitle{Color::Default, Color::Default, attrReverse};
inline constexpr Style field{Color::Default, Color::Default, attrUnderline};
inline constexpr Style focused{Color::Default, Color::Default, attrReverse};
inline constexpr Style header{Color::Default, Color::Default, attrReverse};
inline constexpr Style selection{Color::White, Color::Blue, 0};
inline constexpr Style status{Color::Default, Color::Default, attrReverse};
inline constexpr Style busy{Color::Yellow, Color::Default, attrReverse | attrBold};
} // namespace styles

/// A style dimmed, for a disabled control.
inline Style dimmed(Style s) {
    return s.with(attrDim);
}

/// The style of a selected cell or row with the given selection colours: the
/// highlight colours where they map to one, reverse video where they do not.
Style selectionStyle(forms::Color foreSel, forms::Color backSel);

} // namespace tui
