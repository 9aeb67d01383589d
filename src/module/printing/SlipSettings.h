// The slip's readers of ShopSetting.txt, and the 16-bit arithmetic of its widths.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace tqsv2731 {

class Module;
class frmMaster;

/// The settings file of the program folder, found whatever the letter case
/// of its name on disk.
std::string SettingsFilePath(Module &m);

/// The file that stands for a path on drive C of the old systems (the slip's
/// "C:\StockVer.txt"): a file of the session's state folder, the same one
/// whatever the letter case. The folder is made if it is missing.
std::string DriveCFile(Module &m, std::string_view windowsPath);

/// Each reader puts the key into `strSettingKey` of the register and reads it
/// with FileCode from `strSettingsFile`; every read opens and scans the file.
///
/// As text, upper-cased and trimmed.
std::string ReadSettingText(Module &m, frmMaster &form, std::string_view key);
/// Upper-cased, trimmed and converted with CInt: a value that is no number
/// (the "NotFound" of a missing key, an empty value) raises 13.
std::int16_t ReadSettingCInt(Module &m, frmMaster &form, std::string_view key);
/// Upper-cased, trimmed, Val, then rounded to 16 bits: no number reads 0.
std::int16_t ReadSettingVal(Module &m, frmMaster &form, std::string_view key);
/// CInt of the value as FileCode gave it, with neither upper-casing nor
/// trimming: the empty value of a failed read converts to 0.
std::int16_t ReadSettingRawCInt(Module &m, frmMaster &form, std::string_view key);

/// A width or line count as the old 16-bit integers held it: raises 6
/// (Overflow) outside -32768 to 32767.
std::int16_t Int16(long value);

} // namespace tqsv2731
