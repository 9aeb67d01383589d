// tui::PrintSpooler: printers for the terminal host: ports, devices, and the system's print queues.
#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>

namespace tui {

/// Hands a file to the system's print spooler: `lp [-d QUEUE] [-o raw] FILE`.
/// An empty queue is the system's default printer. Raises vb::Error 57
/// ("Device I/O error") with lp's complaint when lp cannot run or refuses.
void sendToSpooler(const std::string &queue, const std::string &file, bool raw);

/// Opens a printer by the name the settings file gives it, for raw bytes:
/// a port set up in `ports` (letter case ignored) writes to its file or
/// device; a path writes to that existing file or device (its letter case
/// does not count); any other name is a queue of the spooler, printed raw.
/// The bytes are kept until the stream is flushed (the close of the slip's
/// channel) and only then sent, so a slip that fails half way is never
/// printed; a refusal then sets the stream's badbit. A port that is not set
/// up to a path, or a path that names nothing, raises 75.
std::unique_ptr<std::ostream> openPrinterPort(const std::string &name,
                                              const std::map<std::string, std::string> &ports);

} // namespace tui
