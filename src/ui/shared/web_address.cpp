#include "ui/shared/web_address.h"

namespace skyhop {
namespace {

/// A menu with longer titles would be wider than the window.
constexpr std::size_t kLongestTitle = 40;

/// The address behind "https://".
std::string_view AfterScheme(std::string_view url) {
  const std::size_t scheme = url.find("://");
  return scheme == std::string_view::npos ? url : url.substr(scheme + 3);
}

/// The last part of the path that has a name, without its extension.
std::string_view LastName(std::string_view path) {
  path = path.substr(0, path.find_first_of("?#"));
  while (path.ends_with('/')) path.remove_suffix(1);
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return {};
  path.remove_prefix(slash + 1);
  return path.substr(0, path.rfind('.'));
}

}  // namespace

std::string WebHost(std::string_view url) {
  std::string_view host = AfterScheme(url);
  host = host.substr(0, host.find_first_of("/?#"));
  if (const std::size_t user = host.rfind('@'); user != std::string_view::npos) {
    host.remove_prefix(user + 1);
  }
  std::string text = LowerCase(host.substr(0, host.find(':')));
  return text.starts_with("www.") ? text.substr(4) : text;
}

std::string WebPageTitle(std::string_view url) {
  std::string host = WebHost(url);
  std::string name(LastName(AfterScheme(url)));
  for (const char* blank : {"-", "_", "%20", "+"}) name = ReplaceAll(name, blank, " ");
  name = std::string(Trim(name));
  if (name.empty() || name.size() > kLongestTitle) return host;
  return UpperCase(name.substr(0, 1)) + name.substr(1) + " (" + host + ")";
}

}  // namespace skyhop
