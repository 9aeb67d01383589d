// forms::Shell: starting a program by its command line, as the old Shell did.
#pragma once

#include <filesystem>
#include <string_view>

namespace forms {

class Screen;

/// Starts the program of `commandLine` and returns at once, without waiting
/// for it. The one program this platform has is the full-screen text viewer
/// that the old systems kept as "edit.com" in their windows folder: a command
/// line whose program is named so (in any folder, any letter case) shows its
/// last argument, a drive path placed under `driveRoot` (vb::DrivePath), in
/// the host's viewer. `windowStyle` (3: maximised with the focus) is the
/// host's to honour; the viewer always fills the screen. Any other program
/// raises 53 ("File not found"), as starting a missing program did; an edit
/// line with no file raises 5.
void Shell(Screen &screen, std::string_view commandLine, int windowStyle,
           const std::filesystem::path &driveRoot);

} // namespace forms
