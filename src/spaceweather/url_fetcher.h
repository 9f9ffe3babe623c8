#pragma once

#include <cstdint>
#include <filesystem>
#include <stop_token>
#include <string>

namespace skyhop {

/// The result codes of a fetch that have a text of their own (Common::GetFileErrorDescription).
/// Windows reports them as they are; other back ends map their failures onto them.
namespace fetch_codes {

/// A code as the system's headers write it, without its sign.
[[nodiscard]] constexpr std::int32_t Code(std::uint32_t bits) {
  return static_cast<std::int32_t>(bits);
}

inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kAccessDenied = Code(0x80070005);  ///< the file cannot be written
inline constexpr std::int32_t kAborted = Code(0x80004004);       ///< cancelled, or a read-only file
inline constexpr std::int32_t kOutOfMemory = Code(0x8007000E);
inline constexpr std::int32_t kInvalidUrl = Code(0x800C0002);
inline constexpr std::int32_t kNoSession = Code(0x800C0003);
inline constexpr std::int32_t kCannotConnect = Code(0x800C0004);
inline constexpr std::int32_t kResourceNotFound = Code(0x800C0005);  ///< unknown host
inline constexpr std::int32_t kObjectNotFound = Code(0x800C0006);    ///< no such file there
inline constexpr std::int32_t kDataNotAvailable = Code(0x800C0007);
inline constexpr std::int32_t kDownloadFailure = Code(0x800C0008);
inline constexpr std::int32_t kAuthenticationRequired = Code(0x800C0009);
inline constexpr std::int32_t kNoValidMedia = Code(0x800C000A);
inline constexpr std::int32_t kConnectionTimeout = Code(0x800C000B);
inline constexpr std::int32_t kInvalidRequest = Code(0x800C000C);
inline constexpr std::int32_t kUnknownProtocol = Code(0x800C000D);
inline constexpr std::int32_t kSecurityProblem = Code(0x800C000E);
inline constexpr std::int32_t kCannotLoadData = Code(0x800C000F);
inline constexpr std::int32_t kCannotInstantiateObject = Code(0x800C0010);
inline constexpr std::int32_t kQueryOptionUnknown = Code(0x800C0013);
inline constexpr std::int32_t kRedirectFailed = Code(0x800C0014);
inline constexpr std::int32_t kRedirectToDir = Code(0x800C0015);
inline constexpr std::int32_t kCannotLockRequest = Code(0x800C0016);

}  // namespace fetch_codes

/// Fetches the content of an address into a file.
///
/// Fetch may be called on another thread than the one that made the fetcher, but only one call runs
/// at a time. Nothing here throws.
class UrlFetcher {
 public:
  virtual ~UrlFetcher() = default;

  /// Removes an address (UTF-8, blanks already escaped) from the system's cache, so that a fetch
  /// cannot be served from an old copy. Returns the system's result code, 0 if nothing was removed
  /// or there is no cache.
  virtual std::int32_t RemoveFromCache(const std::string& url) noexcept = 0;

  /// Fetches `url` (UTF-8, as the user typed it, blanks and all) in its newest version into `file`
  /// (an absolute path), replacing an existing one, and waits until that is done or has failed.
  /// Redirects are followed, from an https address to https addresses only. Once `stop` is
  /// requested, from any thread, the fetch ends soon with kAborted and writes no file.
  ///
  /// Returns 0 on success, also when the content is empty; then the file exists and holds the
  /// content byte by byte. Any other result is a failure, one of `fetch_codes` where one fits; the
  /// file may then be absent, be the old one or hold a part of the content.
  [[nodiscard]] virtual std::int32_t Fetch(const std::string& url,
                                           const std::filesystem::path& file,
                                           const std::stop_token& stop) noexcept = 0;
};

}  // namespace skyhop
