#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "common/diagnostics.h"
#include "spaceweather/url_fetcher.h"

namespace skyhop::Common {

/// The program's own text for the result code of a fetch. Some texts are odd but stay, because
/// users and support know them. A code without one gives "unknown error " and the code as a signed
/// decimal number.
[[nodiscard]] std::string GetFileErrorDescription(std::int32_t code);

/// Gets files from the network.
class FileDownload {
 public:
  /// Both must outlive this object.
  FileDownload(UrlFetcher& fetcher, Diagnostics& diagnostics)
      : fetcher_(&fetcher), diagnostics_(&diagnostics) {}

  /// Fetches the newest version of `url` into `file`, a full path; an existing file is overwritten.
  /// Returns an empty text on success, else a short description of the failure; "Program Error"
  /// when the attempt itself went wrong. Never throws. Ends early once `stop` is requested.
  [[nodiscard]] std::string GetFileFromURL(const std::string& url,
                                           const std::filesystem::path& file,
                                           const std::stop_token& stop = {});

 private:
  UrlFetcher* fetcher_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::Common
