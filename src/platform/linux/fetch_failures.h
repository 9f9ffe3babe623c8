#pragma once

#include <cstdint>

namespace skyhop::platform {

/// How a transfer ended, as libcurl tells.
struct TransferEnd {
  int code = 0;             ///< a CURLcode, 0 for a transfer that went through
  long status = 0;          ///< of the last HTTP response, 0 when there was none
  bool redirected = false;  ///< the failure is that of an address that the server sent us to
};

/// The result code of a fetch for the end of its transfer, 0 for success. An end that is not in the
/// table yields libcurl's own number.
[[nodiscard]] std::int32_t FetchCode(const TransferEnd& end);

}  // namespace skyhop::platform
