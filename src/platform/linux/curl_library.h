#pragma once

#include <curl/curl.h>

namespace skyhop::platform {

/// The functions of libcurl that are used. The library is loaded when one of them is first needed,
/// not with the program: with the dozens of libraries behind it, that would take a noticeable part
/// of a start.
struct CurlLibrary {
  decltype(&curl_easy_init) easy_init = nullptr;
  decltype(&curl_easy_cleanup) easy_cleanup = nullptr;
  decltype(&curl_easy_setopt) easy_setopt = nullptr;
  decltype(&curl_easy_perform) easy_perform = nullptr;
  decltype(&curl_easy_getinfo) easy_getinfo = nullptr;
  decltype(&curl_slist_append) slist_append = nullptr;
  decltype(&curl_slist_free_all) slist_free_all = nullptr;

  /// The library, ready to be used, from any thread; null where there is none that fits.
  [[nodiscard]] static const CurlLibrary* Get();
};

}  // namespace skyhop::platform
