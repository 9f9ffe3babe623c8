#include "spaceweather/file_download.h"

#include <algorithm>
#include <array>

#include "common/files.h"
#include "common/text.h"

namespace skyhop::Common {
namespace {

struct Description {
  std::int32_t code;
  const char* text;
};

constexpr std::array<Description, 22> kDescriptions = {{
    {fetch_codes::kAccessDenied, "access denied"},
    {fetch_codes::kAborted, "existing file is 'read-only'"},
    {fetch_codes::kOutOfMemory, "put of memory"},
    {fetch_codes::kInvalidUrl, "invalid URL"},
    {fetch_codes::kNoSession, "no session"},
    {fetch_codes::kCannotConnect, "cannot connect"},
    {fetch_codes::kResourceNotFound, "resource not found"},
    {fetch_codes::kObjectNotFound, "object not found"},
    {fetch_codes::kDataNotAvailable, "data not available"},
    {fetch_codes::kDownloadFailure, "download failure"},
    {fetch_codes::kAuthenticationRequired, "authentication required"},
    {fetch_codes::kNoValidMedia, "no valid media"},
    {fetch_codes::kConnectionTimeout, "connection timeout"},
    {fetch_codes::kInvalidRequest, "invalid request"},
    {fetch_codes::kUnknownProtocol, "unknown protocol"},
    {fetch_codes::kSecurityProblem, "security problem"},
    {fetch_codes::kCannotLoadData, "cannot load data"},
    {fetch_codes::kCannotInstantiateObject, "cannot instantiate object"},
    {fetch_codes::kQueryOptionUnknown, "query option unknown"},
    {fetch_codes::kRedirectFailed, "redirect failed"},
    {fetch_codes::kRedirectToDir, "redirect to dir"},
    {fetch_codes::kCannotLockRequest, "cannot lock request"},
}};

}  // namespace

std::string GetFileErrorDescription(std::int32_t code) {
  const auto* const found =
      std::find_if(kDescriptions.begin(), kDescriptions.end(),
                   [&](const Description& description) { return description.code == code; });
  if (found != kDescriptions.end()) return found->text;
  return "unknown error " + std::to_string(code);
}

std::string FileDownload::GetFileFromURL(const std::string& url, const std::filesystem::path& file,
                                         const std::stop_token& stop) {
  return diagnostics_->Trap("Common.GetFileFromURL", std::string("Program Error"), [&] {
    diagnostics_->DebugLog("Common.GetFileFromURL: starting");
    diagnostics_->DebugLog("   theURL = " + url);
    diagnostics_->DebugLog("   theFile = " + PathText(file));

    // The cache knows addresses by their escaped form.
    const std::string cached_url = ReplaceAll(url, " ", "%20");
    const std::int32_t removed = fetcher_->RemoveFromCache(cached_url);
    diagnostics_->DebugLog("   CachedURL = " + cached_url);
    diagnostics_->DebugLog("   Deletion Result = " + std::to_string(removed));

    const std::int32_t code = fetcher_->Fetch(url, file, stop);
    if (code == fetch_codes::kOk) {
      diagnostics_->DebugLog("Common.GetFileFromURL: complete");
      return std::string();
    }
    std::string description = GetFileErrorDescription(code);
    diagnostics_->DebugLog("Common.GetFileFromURL failed: " + description +
                           ", error code = " + std::to_string(code));
    return description;
  });
}

}  // namespace skyhop::Common
