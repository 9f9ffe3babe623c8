#pragma once

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/results_table.h"

// The common parts of the parsers of results files.

namespace skyhop::IONCAPModule {

/// The lines of a text, ended by LF or CR LF.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  /// The next line, nothing at the end of the text.
  std::optional<std::string_view> Next() {
    if (rest_.empty()) return std::nullopt;
    ++number_;
    return TakeLine(rest_);
  }

  /// Number of the line that Next() returned last, counted from 1.
  [[nodiscard]] std::size_t Number() const { return number_; }

 private:
  std::string_view rest_;
  std::size_t number_ = 0;
};

/// A line with its place in the file, for messages.
struct Place {
  const std::string* file_name;
  std::size_t line_number;
  std::string_view line;
};

/// The columns of a line from `first` (counted from 1); fewer if the line is shorter.
inline std::string_view Columns(std::string_view line, std::size_t first, std::size_t width) {
  return first > line.size() ? std::string_view() : line.substr(first - 1, width);
}

/// Throws the error of a field and adds its place to the message.
[[noreturn]] inline void ThrowField(const Error& error, const Place& place, std::size_t first,
                                    std::size_t width) {
  throw Error(error.Number(), std::string(error.what()) + " (" + *place.file_name + ", line " +
                                  std::to_string(place.line_number) + ", columns " +
                                  std::to_string(first) + "-" + std::to_string(first + width - 1) +
                                  ")");
}

/// Converts one field. Adds the place to an Error that `convert` throws.
template <class Convert>
auto Field(const Place& place, std::size_t first, std::size_t width, Convert convert) {
  try {
    return convert(Columns(place.line, first, width));
  } catch (const Error& error) {
    ThrowField(error, place, first, width);
  }
}

inline float SingleField(const Place& place, std::size_t first, std::size_t width) {
  return Field(place, first, width, [](std::string_view text) { return ToSingle(text); });
}

/// The axis covers whole MHz.
inline void RoundAxis(ResultsTable& table) {
  table.f_min = std::floor(table.f_min);
  table.f_max = std::ceil(table.f_max);
}

}  // namespace skyhop::IONCAPModule
