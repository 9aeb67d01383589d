// The old language's string functions. Text is UTF-8; lengths and positions count characters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vb {

enum class Compare { Binary = 0, Text = 1 };

/// Blanks (spaces) only, as the old Trim did; tabs and line ends stay.
std::string Trim(std::string_view s);
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);
std::string UCase(std::string_view s);
std::string LCase(std::string_view s);
/// Raises 5 for a negative length.
std::string Left(std::string_view s, long length);
std::string Right(std::string_view s, long length);
/// Mid(s, start) and Mid(s, start, length); start counts from 1, raises 5 below 1.
std::string Mid(std::string_view s, long start);
std::string Mid(std::string_view s, long start, long length);
long Len(std::string_view s);
/// Position (from 1) of the first `find` in `s` at or after `start`, 0 if none.
long InStr(long start, std::string_view s, std::string_view find, Compare cmp = Compare::Binary);
long InStr(std::string_view s, std::string_view find, Compare cmp = Compare::Binary);
std::string Replace(std::string_view s, std::string_view find, std::string_view with);
std::string Space(long n);
std::string String(long n, std::string_view ch);
/// Split as the old Split did: an empty text gives an empty array.
std::vector<std::string> Split(std::string_view s, std::string_view delimiter);
std::string Join(const std::vector<std::string> &parts, std::string_view delimiter);
/// The character of a code (0-255 as Latin-1, shown as UTF-8) and back.
std::string Chr(int code);
int Asc(std::string_view s);
/// Compares as the old StrComp: -1, 0 or 1.
int StrComp(std::string_view a, std::string_view b, Compare cmp = Compare::Binary);

} // namespace vb
