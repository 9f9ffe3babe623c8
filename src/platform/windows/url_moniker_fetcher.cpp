#include "platform/windows/url_moniker_fetcher.h"

#include <windows.h>

#include <objbase.h>
#include <urlmon.h>
#include <wininet.h>

#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

/// Asks for the newest version (BINDF_GETNEWESTVERSION).
constexpr DWORD kNewestVersion = 16;

/// The system's component model, which every thread that fetches has to open for itself.
class ComponentModel {
 public:
  ComponentModel() : result_(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~ComponentModel() {
    // Where somebody else opened it in another way, it serves as it is and is theirs to close.
    if (SUCCEEDED(result_)) ::CoUninitialize();
  }
  ComponentModel(const ComponentModel&) = delete;
  ComponentModel& operator=(const ComponentModel&) = delete;

 private:
  HRESULT result_;
};

}  // namespace

std::int32_t UrlMonikerFetcher::RemoveFromCache(const std::string& url) noexcept {
  try {
    return ::DeleteUrlCacheEntryW(Wide(url).c_str());
  } catch (const std::exception&) {
    return 0;
  }
}

std::int32_t UrlMonikerFetcher::Fetch(const std::string& url,
                                      const std::filesystem::path& file) noexcept {
  try {
    const ComponentModel model;
    return static_cast<std::int32_t>(
        ::URLDownloadToFileW(nullptr, Wide(url).c_str(), file.c_str(), kNewestVersion, nullptr));
  } catch (const std::exception&) {
    return fetch_codes::kOutOfMemory;
  }
}

}  // namespace skyhop::platform
