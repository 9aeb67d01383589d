// script::parseKeyName: the keys a scenario presses, by name ("Enter", "Shift+Tab", "Alt+N").
#pragma once

#include "forms/Keys.h"

#include <optional>
#include <string_view>

namespace script {

/// The keystroke a key name stands for: modifiers "Shift+", "Ctrl+", "Alt+"
/// in any order and letter case, then a key: Enter, Tab, Escape (Esc),
/// Delete (Del), Backspace, Space, Insert, Home, End, PageUp, PageDown, Up,
/// Down, Left, Right, F1 to F12, a letter or a digit. The character is the
/// one a US keyboard gives (Ctrl+D 4, Ctrl+Enter 10). None for a name it does
/// not know.
std::optional<forms::KeyStroke> parseKeyName(std::string_view name);

} // namespace script
