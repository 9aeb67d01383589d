// vb::Error: the one failure type of the system, as the old runtime raised it.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vb {

/// A run-time failure with the number, source and description that the old
/// platform's Err object carried. Database failures carry the data layer's
/// (negative) numbers.
class Error : public std::runtime_error {
public:
    Error(std::int32_t number, std::string source, std::string description);

    /// A standard run-time error (5, 6, 9, 13, 52, 53, 55, 62, 91, 94, 3021, ...)
    /// with the platform's own text.
    static Error standard(std::int32_t number, std::string source = "");

    std::int32_t number() const { return number_; }
    const std::string &source() const { return source_; }
    const std::string &description() const { return description_; }

private:
    std::int32_t number_;
    std::string source_;
    std::string description_;
};

/// The platform's text for a standard error number ("Overflow" for 6), or
/// "Application-defined or object-defined error" for a number it does not know.
std::string standardErrorText(std::int32_t number);

/// Standard error numbers used across the system.
namespace err {
inline constexpr std::int32_t InvalidProcedureCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t BadFileNameOrNumber = 52;
inline constexpr std::int32_t FileNotFound = 53;
inline constexpr std::int32_t FileAlreadyOpen = 55;
inline constexpr std::int32_t BadFileMode = 54;
inline constexpr std::int32_t DeviceIOError = 57;
inline constexpr std::int32_t InputPastEndOfFile = 62;
inline constexpr std::int32_t TooManyFiles = 67;
inline constexpr std::int32_t PathFileAccessError = 75;
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t InvalidUseOfNull = 94;
inline constexpr std::int32_t NoCurrentRecord = 3021;
} // namespace err

} // namespace vb
