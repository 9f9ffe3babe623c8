#include "platform/linux/curl_library.h"

#include <dlfcn.h>

#include <optional>

namespace skyhop::platform {
namespace {

/// The interface that the headers describe, by the name that all its releases share.
constexpr const char* kFile = "libcurl.so.4";

template <class Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  return function != nullptr;
}

std::optional<CurlLibrary> Load() {
  // Stays loaded: there is no end of it to wait for.
  void* const library = ::dlopen(kFile, RTLD_LAZY | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  CurlLibrary curl;
  decltype(&curl_global_init) global_init = nullptr;
  const bool complete = Find(library, "curl_global_init", global_init) &&
                        Find(library, "curl_easy_init", curl.easy_init) &&
                        Find(library, "curl_easy_cleanup", curl.easy_cleanup) &&
                        Find(library, "curl_easy_setopt", curl.easy_setopt) &&
                        Find(library, "curl_easy_perform", curl.easy_perform) &&
                        Find(library, "curl_easy_getinfo", curl.easy_getinfo) &&
                        Find(library, "curl_slist_append", curl.slist_append) &&
                        Find(library, "curl_slist_free_all", curl.slist_free_all);
  if (!complete || global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) return std::nullopt;
  return curl;
}

}  // namespace

const CurlLibrary* CurlLibrary::Get() {
  static const std::optional<CurlLibrary> kLibrary = Load();
  return kLibrary ? &*kLibrary : nullptr;
}

}  // namespace skyhop::platform
