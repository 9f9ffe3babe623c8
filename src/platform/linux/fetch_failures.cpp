#include "platform/linux/fetch_failures.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>

#include "spaceweather/url_fetcher.h"

namespace skyhop::platform {
namespace {

enum class Only { kAlways, kRedirected };

/// An end of a transfer and what it is called. The first row that fits counts.
struct Row {
  int code;
  std::int32_t result;
  Only when = Only::kAlways;
  long first_status = 0;  ///< range of HTTP states; 0 to 999 is any
  long last_status = 999;
};

constexpr auto kRows = std::to_array<Row>({
    // A response without the content that was asked for.
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

    // The way to the server.
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
    // Only content beyond the limit is refused while it comes in.
    {CURLE_WRITE_ERROR, fetch_codes::kCannotLoadData},

    // This machine.
    {CURLE_OUT_OF_MEMORY, fetch_codes::kOutOfMemory},
    {CURLE_FAILED_INIT, fetch_codes::kNoSession},
    {CURLE_NOT_BUILT_IN, fetch_codes::kCannotInstantiateObject},
    {CURLE_UNKNOWN_OPTION, fetch_codes::kQueryOptionUnknown},
});

}  // namespace

std::int32_t FetchCode(const TransferEnd& end) {
  const auto* const row = std::find_if(kRows.begin(), kRows.end(), [&](const Row& candidate) {
    return candidate.code == end.code && (candidate.when == Only::kAlways || end.redirected) &&
           candidate.first_status <= end.status && end.status <= candidate.last_status;
  });
  return row != kRows.end() ? row->result : end.code;
}

}  // namespace skyhop::platform
