#include "forms/Shell.h"

#include "forms/Screen.h"
#include "forms/Ui.h"
#include "vb/Error.h"
#include "vb/Strings.h"
#include "vb/WindowsPath.h"

#include <string>
#include <vector>

namespace forms {

void Shell(Screen &screen, std::string_view commandLine, int /*windowStyle*/,
           const std::filesystem::path &driveRoot) {
    std::vector<std::string> words;
    for (const std::string &word : vb::Split(commandLine, " ")) {
        if (!word.empty()) {
            words.push_back(word);
        }
    }
    if (words.empty()) {
        throw vb::Error::standard(vb::err::InvalidProcedureCall, "Shell");
    }
    const std::string program = words.front();
    const std::string name = program.substr(program.find_last_of("\\/") + 1);
    if (vb::StrComp(name, "edit.com", vb::Compare::Text) != 0) {
        throw vb::Error(vb::err::FileNotFound, "Shell", "File not found: " + program);
    }
    if (words.size() < 2) {
        throw vb::Error(vb::err::InvalidProcedureCall, "Shell",
                        "Invalid procedure call or argument: the viewer was given no file");
    }
    screen.ui().showTextFile(vb::DrivePath(driveRoot, words.back()).string());
}

} // namespace forms
