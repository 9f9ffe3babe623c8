#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

namespace skyhop {

/// Converts between the program's UTF-8 texts and the toolkit's; no other code does. Bytes that are
/// not UTF-8 are read as ISO 8859-1, so that a text from elsewhere is shown rather than lost.
[[nodiscard]] inline wxString ToWx(std::string_view text) {
  wxString converted = wxString::FromUTF8(text.data(), text.size());
  if (converted.empty() && !text.empty()) {
    converted = wxString(text.data(), wxConvISO8859_1, text.size());
  }
  return converted;
}

[[nodiscard]] inline std::string FromWx(const wxString& text) {
  const wxScopedCharBuffer bytes = text.utf8_str();
  return {bytes.data(), bytes.length()};
}

}  // namespace skyhop
