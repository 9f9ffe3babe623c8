#pragma once

#include <string>
#include <string_view>

#include "common/text.h"

namespace skyhop {

/// Whether a text is the address of a web page. Any other text must not go to a browser, because it
/// could open a file or start a program.
[[nodiscard]] inline bool IsWebAddress(std::string_view text) {
  const std::string lower = LowerCase(text);
  return lower.starts_with("http://") || lower.starts_with("https://");
}

/// The host of a web address, without "www." and port: "swpc.noaa.gov".
[[nodiscard]] std::string WebHost(std::string_view url);

/// A title for a page, made from the end of its address: "Radio communications (swpc.noaa.gov)" for
/// https://www.swpc.noaa.gov/communities/radio-communications. The host alone if the address has no
/// path.
[[nodiscard]] std::string WebPageTitle(std::string_view url);

}  // namespace skyhop
