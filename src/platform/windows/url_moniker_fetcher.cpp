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

/// How long a server may take to answer the call and to send something, for all of this program's
/// downloads. The system's own limits are minutes, for which the window would wait.
void LimitWaiting() noexcept {
  const auto set = [](DWORD option, DWORD value) {
    ::InternetSetOptionW(nullptr, option, &value, sizeof value);
  };
  set(INTERNET_OPTION_CONNECT_TIMEOUT, 10'000);  // ms
  set(INTERNET_OPTION_CONNECT_RETRIES, 1);
  set(INTERNET_OPTION_RECEIVE_TIMEOUT, 60'000);  // ms
}

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
    LimitWaiting();
    const ComponentModel model;
    return static_cast<std::int32_t>(
        ::URLDownloadToFileW(nullptr, Wide(url).c_str(), file.c_str(), kNewestVersion, nullptr));
  } catch (const std::exception&) {
    return fetch_codes::kOutOfMemory;
  }
}

}  // namespace skyhop::platform
