// Windows file names on Linux: drive paths, backslashes and letter case that does not count.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vb {

/// The file a name of the old platform meant: backslashes become slashes, and
/// each part of the path that does not exist as written is matched, ignoring
/// letter case, against what its folder holds, since the old file system
/// ignored case. A part with no match is kept as written (a file to be made).
std::filesystem::path PathIgnoringCase(std::string_view path);

/// A drive path such as "C:\StockVer.txt" or "c:\stockver.txt", placed under
/// `driveRoot`, the folder that stands for the drive's root: both spellings
/// name one file. A name without a drive letter is taken as below the root too.
std::filesystem::path DrivePath(const std::filesystem::path &driveRoot, std::string_view windowsPath);

/// GetWindowsDirectoryA of kernel32: writes the windows folder, "C:\WINDOWS",
/// and its terminating zero over the start of `buffer` (which keeps the rest
/// of what it held) when it fits in `size`, and returns the folder's length;
/// when it does not fit, the buffer is left alone and the size needed is
/// returned, zero included.
long GetWindowsDirectoryA(std::string &buffer, long size);

} // namespace vb
