#include "DemoSession.h"

#include "forms/Utf8.h"
#include "hosts/tui/Palette.h"

#include <gtest/gtest.h>

namespace tui::test {
namespace {

class RegisterScreen : public DemoSession {
protected:
    /// Shows the register, closes it with Alt+C, and returns the first frame
    /// drawn (the canvas keeps the last one, before the close).
    std::string firstRegisterFrame(int interfaceId) {
        terminal_.typeLater("\033c");
        showRegister(interfaceId);
        return terminal_.frames().at(0);
    }

    /// The style of the first cell of the canvas row that shows `text`.
    Style styleOf(const std::string &text) const {
        const Canvas &c = host_.canvas();
        for (int y = 0; y < c.height(); ++y) {
            auto at = c.row(y).find(text);
            if (at != std::string::npos) {
                int x = static_cast<int>(forms::utf8::length(c.row(y).substr(0, at)));
                return c.at(x, y).style;
            }
        }
        ADD_FAILURE() << text << " is not on the screen";
        return {};
    }
};

TEST_F(RegisterScreen, RegisterOfTheDemoGodown) {
    std::string frame = firstRegisterFrame(1005);
    EXPECT_EQ(frame, R"(

         ┌ Stock Verification ────────────────────────────────────────────────────────────┐
         │ ┌ Browse ────────────────────────────────────────────────────────────────────┐ │
         │ │(*) Ascending                       ▼ Search On:              ▼             │ │
         │ │( ) Descending                                                              │ │
         │ └────────────────────────────────────────────────────────────────────────────┘ │
         │ Verification No│Date      │Verified By│Deleted│Remarks                       │ │
         │ SVA2           │05/10/2026│SUNITA IYER│No     │Stationery and beverages recou│ │
         │ SVA3           │19/10/2026│RAHUL MEHTA│Yes    │Rice and paper spot check     │ │
         │ SVA4           │02/11/2026│SUNITA IYER│No     │Dairy and water monthly count │ │
         │ SVA5           │09/11/2026│RAHUL MEHTA│No     │Fast movers weekly count      │ │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │          [  New   ]  [  Edit  ]  [ Delete ]  [ Print  ]    [ Close  ]          │
         │                                                                                │
         │                                                                                │
         └────────────────────────────────────────────────────────────────────────────────┘



 Alt+N New  Alt+E Edit  Alt+D Delete  Alt+P Print  Alt+C Close  Ctrl+D List  Alt+A Ascending
)");
    EXPECT_EQ(styleOf("SVA3").fg, Color::Red) << "a deleted entry";
    EXPECT_EQ(styleOf("SVA5"), styles::selection) << "the newest entry, selected";
    EXPECT_EQ(styleOf("SVA4"), styles::plain);
}

TEST_F(RegisterScreen, NewEntryFormOverTheRegister) {
    terminal_.typeLater("\033n"); // Alt+N: New
    terminal_.typeLater("\033c"); // Alt+C: the entry form's Close
    terminal_.typeLater("\033c"); // and the register's
    showRegister(1005);
    auto frames = terminal_.framesShowing("Godown Stock Verification");
    ASSERT_EQ(frames.size(), 1u);
    EXPECT_EQ(frames[0], R"(

         ┌ Godown Stock Verification ─────────────────────────────────────────────────────┐
         │ ┌────────────────────────────────────────────────────────────────────────────┐ │
         │ │No:                Date:  22/11/2026 Done by: RAHUL MEHTA                   │ │
         │ │Remarks:                                                                    │ │
         │ └────────────────────────────────────────────────────────────────────────────┘ │
         │                                                                                │
         │ SlNo │Item Code   │Item Description                       │Available GS│Verif│ │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │ ┌ Browse ──────────────────────────────────────────────────────┐ [    OK    ]  │
         │ │(*) Ascending                  ▼ Search On:                  ▼│               │
         │ │( ) Descending                                                │ [  Close   ]  │
         │ └──────────────────────────────────────────────────────────────┘               │
         │                                                                                │
         │                                                                                │
         └────────────────────────────────────────────────────────────────────────────────┘



 Alt+O OK  Alt+C Close  Ctrl+D List  Alt+D Done by  Alt+R Remarks  Alt+A Ascending  Alt+S Search On
)");
}

} // namespace
} // namespace tui::test
