#include "vb/FileChannels.h"

#include "vb/Error.h"

#include <filesystem>
#include <fstream>
#include <map>

namespace vb {
namespace {

struct Channel {
    FileMode mode;
    std::string path;
    std::ifstream in;
    std::ofstream out;
    /// A device stream (FileOpenDevice) in place of `out`.
    std::unique_ptr<std::ostream> device;

    std::ostream &output() { return device ? *device : out; }
};

/// The open channels of the process, by number, as the old runtime kept them.
std::map<int, Channel> &channels() {
    static std::map<int, Channel> open;
    return open;
}

[[noreturn]] void raise(std::int32_t number, std::string_view source) {
    throw Error::standard(number, std::string(source));
}

Channel &openChannel(int number, std::string_view source) {
    auto it = channels().find(number);
    if (it == channels().end())
        raise(err::BadFileNameOrNumber, source);
    return it->second;
}

Channel &inputChannel(int number, std::string_view source) {
    Channel &c = openChannel(number, source);
    if (c.mode != FileMode::Input)
        raise(err::BadFileMode, source);
    return c;
}

Channel &outputChannel(int number, std::string_view source) {
    Channel &c = openChannel(number, source);
    if (c.mode == FileMode::Input)
        raise(err::BadFileMode, source);
    return c;
}

void openForInput(Channel &c) {
    std::error_code ec;
    std::filesystem::file_status status = std::filesystem::status(c.path, ec);
    if (!std::filesystem::exists(status))
        raise(err::FileNotFound, "Open");
    if (std::filesystem::is_directory(status))
        raise(err::PathFileAccessError, "Open");
    c.in.open(c.path, std::ios::binary);
    if (!c.in)
        raise(err::PathFileAccessError, "Open");
}

void openForOutput(Channel &c) {
    std::filesystem::path parent = std::filesystem::path(c.path).parent_path();
    std::error_code ec;
    if (!parent.empty() && !std::filesystem::is_directory(parent, ec))
        raise(err::PathNotFound, "Open");
    auto flags = std::ios::binary | (c.mode == FileMode::Append ? std::ios::app : std::ios::trunc);
    c.out.open(c.path, flags);
    if (!c.out)
        raise(err::PathFileAccessError, "Open");
}

void write(int number, std::string_view text, std::string_view source) {
    Channel &c = outputChannel(number, source);
    std::ostream &out = c.output();
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (!out)
        raise(err::DeviceIOError, source);
}

/// Closes the streams of a channel; false when buffered output could not be written.
bool closeStreams(Channel &c) {
    if (c.mode == FileMode::Input) {
        c.in.close();
        return true;
    }
    if (c.device) {
        c.device->flush();
        bool sent = !c.device->fail();
        c.device.reset();
        return sent;
    }
    c.out.close();
    return !c.out.fail();
}

} // namespace

void FileOpen(int number, std::string_view path, FileMode mode) {
    if (number < 1 || number > 511)
        raise(err::BadFileNameOrNumber, "Open");
    if (channels().contains(number))
        raise(err::FileAlreadyOpen, "Open");
    Channel c{mode, std::string(path), {}, {}, {}};
    if (mode == FileMode::Input)
        openForInput(c);
    else
        openForOutput(c);
    channels().emplace(number, std::move(c));
}

void FileOpenDevice(int number, std::string_view name, std::unique_ptr<std::ostream> device) {
    if (number < 1 || number > 511)
        raise(err::BadFileNameOrNumber, "Open");
    if (channels().contains(number))
        raise(err::FileAlreadyOpen, "Open");
    Channel c{FileMode::Output, std::string(name), {}, {}, std::move(device)};
    channels().emplace(number, std::move(c));
}

std::string LineInput(int number) {
    Channel &c = inputChannel(number, "Line Input");
    if (c.in.peek() == std::ifstream::traits_type::eof()) {
        // The channel stays open: a reader may close it in its own time.
        raise(err::InputPastEndOfFile, "Line Input");
    }
    std::string line;
    std::getline(c.in, line);
    if (c.in.bad())
        raise(err::DeviceIOError, "Line Input");
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return line;
}

void PrintLine(int number, std::string_view text) {
    write(number, text, "Print");
    write(number, "\r\n", "Print");
}

void PrintText(int number, std::string_view text) {
    write(number, text, "Print");
}

bool FileEOF(int number) {
    Channel &c = inputChannel(number, "EOF");
    return c.in.peek() == std::ifstream::traits_type::eof();
}

void FileClose(int number) {
    auto it = channels().find(number);
    if (it == channels().end())
        return;
    bool written = closeStreams(it->second);
    channels().erase(it);
    if (!written)
        raise(err::DeviceIOError, "Close");
}

void FileCloseAll() {
    bool written = true;
    for (auto &[number, channel] : channels())
        written = closeStreams(channel) && written;
    channels().clear();
    if (!written)
        raise(err::DeviceIOError, "Close");
}

int FreeFile() {
    for (int number = 1; number <= 255; ++number)
        if (!channels().contains(number))
            return number;
    raise(err::TooManyFiles, "FreeFile");
}

} // namespace vb
