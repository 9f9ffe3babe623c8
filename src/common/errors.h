#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

namespace skyhop {

/// The error numbers that appear in the error log. Support relies on them, so they are the same on
/// every platform.
namespace errors {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscript = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileAlreadyOpen = 55;
inline constexpr int kFileAlreadyExists = 58;
inline constexpr int kDiskFull = 61;
inline constexpr int kInputPastEnd = 62;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kDiskNotReady = 71;
inline constexpr int kPathFileAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kNoLinkPartner = 282;
inline constexpr int kLinkTimedOut = 286;
}  // namespace errors

/// A run-time error with its number and a description that says what was wrong and where.
class Error : public std::runtime_error {
 public:
  Error(int number, const std::string& description)
      : std::runtime_error(description), number_(number) {}

  [[nodiscard]] int Number() const { return number_; }

 private:
  int number_;
};

/// The error for an operating-system failure on a file: its number is one of `errors`, its
/// description `what` followed by the system's own words.
[[nodiscard]] Error FileError(const std::error_code& code, const std::string& what);

}  // namespace skyhop
