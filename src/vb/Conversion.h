// The old language's conversion functions: Val, CInt, CLng, CDbl, CBool, CStr, CDate, ...
#pragma once

#include "vb/Variant.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vb {

/// The number that the leading characters of the text spell, after blanks;
/// blanks inside the number are skipped (" 1 2" is 12); an exponent counts;
/// "&H" and "&O" prefixes read hex and octal; no number gives 0.
double Val(std::string_view text);
double Val(const std::string &text);
double Val(const char *text);
/// Val of the value's text (Val(CStr(v))); Null raises 94.
double Val(const Variant &v);

/// 16-bit conversion: rounds half to even, raises 6 (Overflow) out of range,
/// 13 (Type mismatch) for text that is no number, 94 for Null.
std::int16_t CInt(const Variant &v);
/// 32-bit conversion, same rules as CInt.
std::int32_t CLng(const Variant &v);
double CDbl(const Variant &v);
bool CBool(const Variant &v);
/// Text of a value: numbers with up to 15 significant digits and no trailing
/// zeros, dates in the session's short date form (time only when there is one),
/// booleans "True"/"False", Empty as "". Null raises 94.
std::string CStr(const Variant &v);
/// Text of a value with Null and Empty as "": how the module reads a field
/// into a grid cell or a text box.
std::string TextOf(const Variant &v);
Date CDate(const Variant &v);

bool IsNumeric(const Variant &v);
bool IsDate(const Variant &v);
bool IsNull(const Variant &v);
bool IsEmpty(const Variant &v);

/// Rounds down (Int(-2.5) is -3).
double Int(double x);
/// Truncates toward zero.
double Fix(double x);
/// Rounds half to even at the given number of decimals.
double Round(double x, int decimals = 0);

/// Number as text with a leading blank when not negative (Str(5) is " 5").
std::string Str(double x);

} // namespace vb
