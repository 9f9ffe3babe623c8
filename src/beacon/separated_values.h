#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/diagnostics.h"

namespace skyhop::BeaconModule {

/// A problem in a file.
struct FileProblem {
  std::string file;
  int line = 0;    ///< from 1; 0 when it concerns the file as a whole
  int column = 0;  ///< from 1, in characters; 0 when it concerns the line as a whole
  std::string text;

  /// "BeaconLocation.txt, line 3, column 12: text".
  [[nodiscard]] std::string Message() const;

  friend bool operator==(const FileProblem&, const FileProblem&) = default;
};

/// Writes the problems of each file to the error log, those of the file as a whole first: at most
/// kMostLogged of a file, then one line with the number of the others.
void LogProblems(std::vector<FileProblem> problems, Diagnostics& diagnostics);
inline constexpr int kMostLogged = 20;

/// One field of a line.
struct Field {
  std::string text;
  int column = 1;  ///< where it begins
};

/// One line that is neither blank nor a comment.
struct Record {
  int line = 1;
  std::vector<Field> fields;  ///< never empty but in a broken record
  int end_column = 1;         ///< after the line's last character
  bool broken = false;        ///< its quotes are wrong; `fields` are those before them

  /// A field; empty if the line has fewer fields.
  [[nodiscard]] std::string Text(std::size_t field) const;
  /// The column where a field begins; the end of the line if it has fewer fields.
  [[nodiscard]] int ColumnOf(std::size_t field) const;
};

/// Splits a file into records, one a line: fields between commas, blanks around them left out.
/// A field in double quotes may contain commas, and a quote that is written twice; elsewhere a
/// quote is a character like any other, so that coordinates with seconds need none around them.
/// Blank lines and lines that begin with "#" are left out. Line ends may be CR LF, LF or CR.
///
/// A line whose quotes are not closed, or that has text after closing quotes, is a broken record
/// and adds to `problems`.
[[nodiscard]] std::vector<Record> SplitRecords(std::string_view content, const std::string& file,
                                               std::vector<FileProblem>& problems);

/// `text` as a field of comma-separated values: in quotes where it needs them, line ends as blanks.
[[nodiscard]] std::string CsvField(std::string_view text);

}  // namespace skyhop::BeaconModule
