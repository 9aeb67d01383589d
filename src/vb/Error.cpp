#include "vb/Error.h"

#include <utility>

namespace vb {

Error::Error(std::int32_t number, std::string source, std::string description)
    : std::runtime_error(description), number_(number), source_(std::move(source)),
      description_(std::move(description)) {}

Error Error::standard(std::int32_t number, std::string source) {
    return Error(number, std::move(source), standardErrorText(number));
}

std::string standardErrorText(std::int32_t number) {
    switch (number) {
    case 3:
        return "Return without GoSub";
    case 5:
        return "Invalid procedure call or argument";
    case 6:
        return "Overflow";
    case 7:
        return "Out of memory";
    case 9:
        return "Subscript out of range";
    case 11:
        return "Division by zero";
    case 13:
        return "Type mismatch";
    case 52:
        return "Bad file name or number";
    case 53:
        return "File not found";
    case 54:
        return "Bad file mode";
    case 55:
        return "File already open";
    case 57:
        return "Device I/O error";
    case 61:
        return "Disk full";
    case 62:
        return "Input past end of file";
    case 67:
        return "Too many files";
    case 75:
        return "Path/File access error";
    case 76:
        return "Path not found";
    case 91:
        return "Object variable or With block variable not set";
    case 94:
        return "Invalid use of Null";
    case 424:
        return "Object required";
    case 429:
        return "ActiveX component can't create object";
    case 438:
        return "Object doesn't support this property or method";
    case 3021:
        return "Either BOF or EOF is True, or the current record has been deleted. "
               "Requested operation requires a current record.";
    default:
        return "Application-defined or object-defined error";
    }
}

} // namespace vb
