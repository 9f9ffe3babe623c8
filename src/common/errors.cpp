#include "common/errors.h"

namespace skyhop {

Error FileError(const std::error_code& code, const std::string& what) {
  int number = errors::kPathFileAccess;
  if (code == std::errc::no_such_file_or_directory) {
    number = errors::kFileNotFound;
  } else if (code == std::errc::not_a_directory) {
    number = errors::kPathNotFound;
  } else if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
             code == std::errc::text_file_busy) {
    number = errors::kPermissionDenied;
  } else if (code == std::errc::no_space_on_device) {
    number = errors::kDiskFull;
  } else if (code == std::errc::file_exists) {
    number = errors::kFileAlreadyExists;
  } else if (code == std::errc::no_such_device || code == std::errc::io_error) {
    number = errors::kDiskNotReady;
  }
  return {number, what + ": " + code.message()};
}

}  // namespace skyhop
