// forms::Line: a decorative line on a form.
#pragma once

#include "forms/Control.h"

#include <string_view>

namespace forms {

/// A line from (X1, Y1) to (X2, Y2), in twips. Decoration only.
class Line : public Control {
public:
    Line(Form &form, std::string_view name, int index = -1);
    Line(Container &container, std::string_view name, int index = -1);

    int X1() const { return x1_; }
    int Y1() const { return y1_; }
    int X2() const { return x2_; }
    int Y2() const { return y2_; }
    void setX1(int v) { x1_ = v; }
    void setY1(int v) { y1_ = v; }
    void setX2(int v) { x2_ = v; }
    void setY2(int v) { y2_ = v; }
    Color BorderColor() const { return borderColor_; }
    void setBorderColor(Color c) { borderColor_ = c; }

    bool focusable() const override { return false; }

private:
    int x1_ = 0;
    int y1_ = 0;
    int x2_ = 0;
    int y2_ = 0;
    Color borderColor_ = vbWindowText;
};

} // namespace forms
