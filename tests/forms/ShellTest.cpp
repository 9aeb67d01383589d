#include "forms/Shell.h"

#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "vb/Error.h"

#include <gtest/gtest.h>

namespace {

TEST(ShellTest, TheEditorOfTheWindowsFolderShowsItsFileInTheViewer) {
    forms::TestUi ui;
    forms::Screen screen(ui);
    forms::Shell(screen, "C:\\WINDOWS\\command\\edit.com   c:\\StockVer.txt", 3, "/srv/state");
    forms::Shell(screen, "C:\\windows\\system32\\EDIT.COM c:\\StockVer.txt", 3, "/srv/state");
    ASSERT_EQ(ui.textFilesShown().size(), 2u);
    EXPECT_EQ(ui.textFilesShown()[0], "/srv/state/StockVer.txt");
    EXPECT_EQ(ui.textFilesShown()[1], "/srv/state/StockVer.txt");
}

TEST(ShellTest, OtherProgramsAreNotThere) {
    forms::TestUi ui;
    forms::Screen screen(ui);
    try {
        forms::Shell(screen, "C:\\WINDOWS\\notepad.exe c:\\StockVer.txt", 3, "/srv/state");
        ADD_FAILURE() << "no such program";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 53);
    }
    EXPECT_THROW(forms::Shell(screen, "edit.com", 3, "/srv/state"), vb::Error);
    EXPECT_TRUE(ui.textFilesShown().empty());
}

} // namespace
