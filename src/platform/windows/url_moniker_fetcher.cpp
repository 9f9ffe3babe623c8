#include "platform/windows/url_moniker_fetcher.h"

#include <windows.h>

#include <objbase.h>
#include <urlmon.h>
#include <wininet.h>

#include <atomic>
#include <string_view>
#include <utility>

#include "platform/windows/code_page.h"

namespace skyhop::platform {
namespace {

/// Asks for the newest version (BINDF_GETNEWESTVERSION).
constexpr DWORD kNewestVersion = 16;

/// The system's component model. Every thread that fetches must open it.
class ComponentModel {
 public:
  ComponentModel() : result_(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~ComponentModel() {
    // If other code opened it in another mode, it works as it is, and that code closes it.
    if (SUCCEEDED(result_)) ::CoUninitialize();
  }
  ComponentModel(const ComponentModel&) = delete;
  ComponentModel& operator=(const ComponentModel&) = delete;

 private:
  HRESULT result_;
};

bool IsHttps(std::wstring_view url) {
  constexpr std::wstring_view scheme = L"https:";
  return url.size() >= scheme.size() &&
         ::CompareStringOrdinal(url.data(), static_cast<int>(scheme.size()), scheme.data(),
                                static_cast<int>(scheme.size()), TRUE) == CSTR_EQUAL;
}

// A COM interface has no virtual destructor; Release() deletes the object as its own class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Receives the progress of one download from the system, and ends the download when it is stopped
/// or leaves HTTPS. The system may keep this object longer than the download.
class ProgressWatch final : public IBindStatusCallback {
 public:
  ProgressWatch(const std::wstring& url, std::stop_token stop)
      : stop_(std::move(stop)), secure_(IsHttps(url)) {}
  ProgressWatch(const ProgressWatch&) = delete;
  ProgressWatch& operator=(const ProgressWatch&) = delete;

  /// Whether a redirect ended the download.
  [[nodiscard]] bool Insecure() const { return insecure_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known =
        ::IsEqualIID(id, IID_IUnknown) != 0 || ::IsEqualIID(id, IID_IBindStatusCallback) != 0;
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE OnProgress(ULONG, ULONG, ULONG status, LPCWSTR text) override {
    if (status == BINDSTATUS_REDIRECTING && text != nullptr) {
      if (secure_ && !IsHttps(text)) insecure_ = true;
      secure_ = secure_ || IsHttps(text);
    }
    return GoOn();
  }
  HRESULT STDMETHODCALLTYPE OnStartBinding(DWORD, IBinding*) override { return GoOn(); }
  HRESULT STDMETHODCALLTYPE OnStopBinding(HRESULT, LPCWSTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLowResource(DWORD) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetPriority(LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetBindInfo(DWORD*, BINDINFO*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnDataAvailable(DWORD, DWORD, FORMATETC*, STGMEDIUM*) override {
    return GoOn();
  }
  HRESULT STDMETHODCALLTYPE OnObjectAvailable(REFIID, IUnknown*) override { return S_OK; }

 private:
  ~ProgressWatch() = default;
  [[nodiscard]] HRESULT GoOn() const {
    return insecure_ || stop_.stop_requested() ? E_ABORT : S_OK;
  }

  std::atomic<ULONG> references_ = 1;
  std::stop_token stop_;
  bool secure_;
  std::atomic<bool> insecure_ = false;
};

#pragma GCC diagnostic pop

/// Limits the time that a server may take to accept the connection and to send something, for all
/// of this program's downloads. The system's own limits are minutes, and the window would wait that
/// long.
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

std::int32_t UrlMonikerFetcher::Fetch(const std::string& url, const std::filesystem::path& file,
                                      const std::stop_token& stop) noexcept {
  try {
    LimitWaiting();
    const ComponentModel model;
    const std::wstring address = Wide(url);
    ProgressWatch* const watch = new ProgressWatch(address, stop);
    const HRESULT result =
        ::URLDownloadToFileW(nullptr, address.c_str(), file.c_str(), kNewestVersion, watch);
    const bool insecure = watch->Insecure();
    watch->Release();
    if (insecure || stop.stop_requested()) {
      // The system keeps an incomplete file.
      std::error_code ignored;
      std::filesystem::remove(file, ignored);
    }
    if (insecure) return fetch_codes::kRedirectFailed;
    return stop.stop_requested() ? fetch_codes::kAborted : static_cast<std::int32_t>(result);
  } catch (const std::exception&) {
    return fetch_codes::kOutOfMemory;
  }
}

}  // namespace skyhop::platform
