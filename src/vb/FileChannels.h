// Numbered file channels: Open ... For Input/Output As #n, Line Input, Print, Close, EOF.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace vb {

enum class FileMode { Input, Output, Append };

/// Opens a file on channel `number` (1-511). Raises 55 if the channel is
/// already open, 53 if a file for input does not exist, 75 if it cannot be
/// opened, 76 if the folder of a file for output does not exist, 52 for a
/// bad channel number.
void FileOpen(int number, std::string_view path, FileMode mode);
/// Opens channel `number` for output onto a stream that a host made for a
/// device (a printer port opened by name). Raises 52 and 55 as FileOpen. The
/// stream is flushed and destroyed by FileClose, which raises 57 when the
/// flush fails; a channel never closed never sends what it holds.
void FileOpenDevice(int number, std::string_view name, std::unique_ptr<std::ostream> device);
/// Reads one line without its line end ("\n" or "\r\n"); a last line with no
/// line end is a line too. Raises 62 past the end (the channel stays open),
/// 52 if the channel is not open, 54 if it is open for output.
std::string LineInput(int number);
/// Writes a line and a line end ("\r\n", as the old platform wrote files).
void PrintLine(int number, std::string_view text);
/// Writes text with no line end (Print #n, text;).
void PrintText(int number, std::string_view text);
/// True once no more lines are left. Raises 52 if closed, 54 on an output channel.
bool FileEOF(int number);
/// Closes the channel; closing a channel that is not open does nothing.
/// Raises 57 when buffered output could not be written (the channel is closed).
void FileClose(int number);
/// Closes every channel (the old Close with no number).
void FileCloseAll();
/// The lowest free channel number (1-255); raises 67 when all are taken.
int FreeFile();

} // namespace vb
