// Reading files of value cases: a function, its arguments, and the expected result or error.
#pragma once

#include "vb/Variant.h"

#include <string>
#include <string_view>
#include <vector>

namespace vbtest {

/// One line of a case file:  Function arg arg ... => expected
/// Arguments and the expected value are written as the old language wrote
/// literals: "text" (with \" \\ \t \r \n), 12 (Long), 12% (Integer), 1.5 or
/// 12# (Double), #2023-11-05 13:07:09# (Date), True, False, Null, Empty.
/// An expected "!13" means the call raises error 13.
struct ValueCase {
    int line = 0;
    std::string function;
    std::vector<vb::Variant> args;
    std::string expected; // as render() shows it, or "!<number>"
};

std::vector<ValueCase> readValueCases(const std::string &path);

/// A value as the case files write it, so that results compare as text.
std::string render(const vb::Variant &v);

} // namespace vbtest
