#include "platform/linux/curl_fetcher.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "common/errors.h"
#include "common/files.h"
#include "common/program.h"
#include "common/text.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

constexpr long kMostRedirects = 10;
constexpr const char* kSchemes = "http,https";
constexpr const char* kSecureScheme = "https";

using Handle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using List = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

/// The received content, up to a limit.
struct Body {
  std::string content;
  std::size_t limit = 0;
};

extern "C" std::size_t SkyhopTakeBytes(char* bytes, std::size_t size, std::size_t count,
                                       void* destination) {
  auto& body = *static_cast<Body*>(destination);
  const std::size_t length = size * count;
  if (length > body.limit - body.content.size()) return 0;
  try {
    body.content.append(bytes, length);
  } catch (const std::bad_alloc&) {
    return 0;
  }
  return length;
}

extern "C" int SkyhopFollowProgress(void* stop, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  return static_cast<const std::stop_token*>(stop)->stop_requested() ? 1 : 0;
}

/// Whether an address explicitly selects plain HTTP. Without a scheme, HTTPS applies.
bool IsPlainHttp(std::string_view url) {
  constexpr std::string_view scheme = "http:";
  return EqualsIgnoringCase(url.substr(0, scheme.size()), scheme);
}

/// The options of one request.
class Request {
 public:
  Request(CURL* handle, const FetchLimits& limits) : handle_(handle), limits_(limits) {}

  [[nodiscard]] CURLcode Prepare(const std::string& url, curl_slist* headers, Body& body,
                                 const std::stop_token& stop) {
    // An address has no blanks, but the user may have typed some.
    const std::string address = ReplaceAll(Trim(url), " ", "%20");
    Set(CURLOPT_URL, address.c_str());
    Set(CURLOPT_DEFAULT_PROTOCOL, "https");
    Set(CURLOPT_PROTOCOLS_STR, kSchemes);
    Set(CURLOPT_REDIR_PROTOCOLS_STR, IsPlainHttp(address) ? kSchemes : kSecureScheme);
    Set(CURLOPT_FOLLOWLOCATION, 1L);
    Set(CURLOPT_MAXREDIRS, kMostRedirects);
    Set(CURLOPT_FAILONERROR, 1L);
    Set(CURLOPT_SSL_VERIFYPEER, 1L);
    Set(CURLOPT_SSL_VERIFYHOST, 2L);
    Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits_.connect.count()));
    Set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits_.whole.count()));
    Set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits_.size));
    // Time-outs by signals would disturb the program's other threads.
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_USERAGENT, (std::string(kProductName) + "/" + VersionText()).c_str());
    Set(CURLOPT_HTTPHEADER, headers);
    Set(CURLOPT_WRITEFUNCTION, &SkyhopTakeBytes);
    Set(CURLOPT_WRITEDATA, static_cast<void*>(&body));
    Set(CURLOPT_NOPROGRESS, 0L);
    Set(CURLOPT_XFERINFOFUNCTION, &SkyhopFollowProgress);
    Set(CURLOPT_XFERINFODATA, const_cast<std::stop_token*>(&stop));
    if (!limits_.authorities.empty()) Set(CURLOPT_CAINFO, limits_.authorities.c_str());
    // A stopped fetch does not wait for the name service.
    Set(CURLOPT_QUICK_EXIT, 1L);
    return refusal_;
  }

 private:
  template <class Value>
  void Set(CURLoption option, Value value) {
    if (refusal_ == CURLE_OK) refusal_ = curl_easy_setopt(handle_, option, value);
  }

  CURL* handle_;
  const FetchLimits& limits_;
  CURLcode refusal_ = CURLE_OK;
};

/// The end of a transfer as libcurl reports it.
struct TransferEnd {
  int code = 0;             ///< a CURLcode, 0 for a transfer that went through
  long status = 0;          ///< of the last HTTP response, 0 if there was none
  bool redirected = false;  ///< the failure concerns an address to which the server redirected
};

enum class Only { kAlways, kRedirected };

/// An end of a transfer and its result code. The first matching row applies.
struct Row {
  int code;
  std::int32_t result;
  Only when = Only::kAlways;
  long first_status = 0;  ///< range of HTTP states; 0 to 999 is any
  long last_status = 999;
};

constexpr auto kRows = std::to_array<Row>({
    // A response without the requested content.
    {CURLE_OK, fetch_codes::kOk, Only::kAlways, 0, 299},
    {CURLE_OK, fetch_codes::kRedirectFailed, Only::kAlways, 300, 399},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kAuthenticationRequired, Only::kAlways, 401, 401},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kAccessDenied, Only::kAlways, 403, 403},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kObjectNotFound, Only::kAlways, 404, 404},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kAuthenticationRequired, Only::kAlways, 407, 407},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kConnectionTimeout, Only::kAlways, 408, 408},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kObjectNotFound, Only::kAlways, 410, 410},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kDataNotAvailable, Only::kAlways, 429, 429},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kInvalidRequest, Only::kAlways, 400, 499},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kConnectionTimeout, Only::kAlways, 504, 504},
    {CURLE_HTTP_RETURNED_ERROR, fetch_codes::kDataNotAvailable},

    // The address.
    {CURLE_UNSUPPORTED_PROTOCOL, fetch_codes::kRedirectFailed, Only::kRedirected},
    {CURLE_URL_MALFORMAT, fetch_codes::kRedirectFailed, Only::kRedirected},
    {CURLE_TOO_MANY_REDIRECTS, fetch_codes::kRedirectFailed},
    {CURLE_UNSUPPORTED_PROTOCOL, fetch_codes::kUnknownProtocol},
    {CURLE_URL_MALFORMAT, fetch_codes::kInvalidUrl},
    {CURLE_REMOTE_FILE_NOT_FOUND, fetch_codes::kObjectNotFound},

    // The connection to the server.
    {CURLE_COULDNT_RESOLVE_HOST, fetch_codes::kResourceNotFound},
    {CURLE_COULDNT_RESOLVE_PROXY, fetch_codes::kCannotConnect},
    {CURLE_COULDNT_CONNECT, fetch_codes::kCannotConnect},
    {CURLE_PROXY, fetch_codes::kCannotConnect},
    {CURLE_INTERFACE_FAILED, fetch_codes::kCannotConnect},
    {CURLE_NO_CONNECTION_AVAILABLE, fetch_codes::kCannotConnect},
    {CURLE_QUIC_CONNECT_ERROR, fetch_codes::kCannotConnect},
    {CURLE_OPERATION_TIMEDOUT, fetch_codes::kConnectionTimeout},

    // Trust.
    {CURLE_SSL_CONNECT_ERROR, fetch_codes::kSecurityProblem},
    {CURLE_PEER_FAILED_VERIFICATION, fetch_codes::kSecurityProblem},
    {CURLE_SSL_CERTPROBLEM, fetch_codes::kSecurityProblem},
    {CURLE_SSL_CIPHER, fetch_codes::kSecurityProblem},
    {CURLE_SSL_CACERT_BADFILE, fetch_codes::kSecurityProblem},
    {CURLE_SSL_CRL_BADFILE, fetch_codes::kSecurityProblem},
    {CURLE_SSL_ISSUER_ERROR, fetch_codes::kSecurityProblem},
    {CURLE_SSL_PINNEDPUBKEYNOTMATCH, fetch_codes::kSecurityProblem},
    {CURLE_SSL_INVALIDCERTSTATUS, fetch_codes::kSecurityProblem},
    {CURLE_SSL_CLIENTCERT, fetch_codes::kSecurityProblem},
    {CURLE_SSL_ENGINE_NOTFOUND, fetch_codes::kSecurityProblem},
    {CURLE_SSL_ENGINE_SETFAILED, fetch_codes::kSecurityProblem},
    {CURLE_SSL_ENGINE_INITFAILED, fetch_codes::kSecurityProblem},
    {CURLE_SSL_SHUTDOWN_FAILED, fetch_codes::kSecurityProblem},
    {CURLE_USE_SSL_FAILED, fetch_codes::kSecurityProblem},
    {CURLE_REMOTE_ACCESS_DENIED, fetch_codes::kAccessDenied},
    {CURLE_AUTH_ERROR, fetch_codes::kAuthenticationRequired},
    {CURLE_LOGIN_DENIED, fetch_codes::kAuthenticationRequired},

    // The content.
    {CURLE_PARTIAL_FILE, fetch_codes::kDownloadFailure},
    {CURLE_GOT_NOTHING, fetch_codes::kDownloadFailure},
    {CURLE_SEND_ERROR, fetch_codes::kDownloadFailure},
    {CURLE_RECV_ERROR, fetch_codes::kDownloadFailure},
    {CURLE_WEIRD_SERVER_REPLY, fetch_codes::kDownloadFailure},
    {CURLE_HTTP2, fetch_codes::kDownloadFailure},
    {CURLE_HTTP2_STREAM, fetch_codes::kDownloadFailure},
    {CURLE_BAD_CONTENT_ENCODING, fetch_codes::kCannotLoadData},
    {CURLE_FILESIZE_EXCEEDED, fetch_codes::kCannotLoadData},
    // SkyhopTakeBytes refuses only content beyond the limit.
    {CURLE_WRITE_ERROR, fetch_codes::kCannotLoadData},

    // This machine.
    {CURLE_OUT_OF_MEMORY, fetch_codes::kOutOfMemory},
    {CURLE_FAILED_INIT, fetch_codes::kNoSession},
    {CURLE_NOT_BUILT_IN, fetch_codes::kCannotInstantiateObject},
    {CURLE_UNKNOWN_OPTION, fetch_codes::kQueryOptionUnknown},
});

/// The result code of a fetch for the end of its transfer, 0 for success. An end that is not in the
/// table yields libcurl's own number.
std::int32_t FetchCode(const TransferEnd& end) {
  const auto* const row = std::find_if(kRows.begin(), kRows.end(), [&](const Row& candidate) {
    return candidate.code == end.code && (candidate.when == Only::kAlways || end.redirected) &&
           candidate.first_status <= end.status && end.status <= candidate.last_status;
  });
  return row != kRows.end() ? row->result : end.code;
}

TransferEnd EndOf(CURL* handle, CURLcode code) {
  TransferEnd end;
  end.code = code;
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &end.status);
  long redirects = 0;
  curl_easy_getinfo(handle, CURLINFO_REDIRECT_COUNT, &redirects);
  // The library does not count a redirect that it refuses to follow.
  end.redirected = redirects > 0 || (end.status >= 300 && end.status <= 399);
  return end;
}

std::int32_t Transfer(const std::string& url, const FetchLimits& limits, Body& body,
                      const std::stop_token& stop) {
  const Handle handle(curl_easy_init(), &curl_easy_cleanup);
  const List headers(curl_slist_append(nullptr, "Cache-Control: no-cache"), &curl_slist_free_all);
  if (!handle || !headers) return fetch_codes::kOutOfMemory;
  if (curl_slist_append(headers.get(), "Pragma: no-cache") == nullptr) {
    return fetch_codes::kOutOfMemory;
  }
  CURLcode code = Request(handle.get(), limits).Prepare(url, headers.get(), body, stop);
  if (code == CURLE_OK) code = curl_easy_perform(handle.get());
  return FetchCode(EndOf(handle.get(), code));
}

/// Whether an existing file is write-protected by its owner. The check is needed because the system
/// replaces any file in a writable folder.
bool IsReadOnly(const std::filesystem::path& file) {
  std::error_code none;
  const std::filesystem::file_status status = std::filesystem::status(file, none);
  return std::filesystem::is_regular_file(status) &&
         (status.permissions() & std::filesystem::perms::owner_write) ==
             std::filesystem::perms::none;
}

std::int32_t Write(const std::filesystem::path& file, const std::string& content) {
  try {
    WriteFileAtOnce(file, content);
    return fetch_codes::kOk;
  } catch (const Error& error) {
    return error.Number() == errors::kDiskFull ? fetch_codes::kCannotLoadData
                                               : fetch_codes::kAccessDenied;
  }
}

}  // namespace

CurlFetcher::CurlFetcher(FetchLimits limits) : limits_(std::move(limits)) {}

std::int32_t CurlFetcher::RemoveFromCache(const std::string& /*url*/) noexcept {
  return 0;
}

std::int32_t CurlFetcher::Fetch(const std::string& url, const std::filesystem::path& file,
                                const std::stop_token& stop) noexcept {
  try {
    if (IsReadOnly(file)) return fetch_codes::kAborted;
    Body body{.content = {}, .limit = limits_.size};
    const std::int32_t code = Transfer(url, limits_, body, stop);
    if (stop.stop_requested()) return fetch_codes::kAborted;
    return code == fetch_codes::kOk ? Write(file, body.content) : code;
  } catch (...) {
    // Only a lack of memory can throw here.
    return fetch_codes::kOutOfMemory;
  }
}

std::unique_ptr<UrlFetcher> MakeUrlFetcher() {
  return std::make_unique<CurlFetcher>();
}

}  // namespace skyhop::platform
