#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "common/diagnostics.h"
#include "common/pause.h"

namespace skyhop::IONCAPModule {

/// File numbers of the two scripts that can be open at the same time.
inline constexpr int kPredictionScript = 21;
inline constexpr int kSnrScript = 22;

/// Deletes a file if there is one: up to 11 attempts, 50 ms apart, because an engine or a virus
/// scanner may still hold it. Returns whether the file is gone. A folder is never deleted.
[[nodiscard]] bool DeleteWithRetries(const std::filesystem::path& file, Pause& pause);

/// Opens, fills and closes the engines' input scripts: fixed columns, one card per line, every line
/// ended by CR LF.
///
/// The field writers do not end the line. A value too wide for its field is written in full, which
/// shifts the later columns; for an invalid format they write "***Format Error***" instead. Each
/// writer reports its own failures, such as a file number that is not open, and returns.
class ScriptCards {
 public:
  ScriptCards(Pause& pause, Diagnostics& diagnostics)
      : pause_(&pause), diagnostics_(&diagnostics) {}

  /// Deletes an old file of that name and opens a new one, with up to 11 attempts for each. Returns
  /// its number, or -1 if that failed (the error log has the reason).
  [[nodiscard]] int InitializeScript(const std::filesystem::path& file, bool snr);

  /// Closes a script. Returns whether it is complete: all fields written, none replaced by an error
  /// marker, and all of them in the file. Otherwise the error log has the reason.
  bool CloseScript(int file);

  /// `text` left-justified in `width` columns; a longer text is cut.
  void PutString(int file, std::string_view text, int width);
  /// `text` right-justified; a longer one is replaced by "***PutRightString Overflow error***".
  void PutRightString(int file, std::string_view text, int width);
  /// `value` with zeros on the left up to `width` digits, a minus sign before them. A negative
  /// width writes the format error into the prediction script, even if `file` is the other one.
  void PutInteger(int file, std::int16_t value, int width);
  /// `value` with an implied decimal point. `format` is width.decimals, as 5.2. Multiplies by the
  /// power of ten in single precision and rounds half away from zero.
  void PutFloat(int file, float value, float format);
  /// `value` right-justified in width - 1 columns, then a period. Cuts a longer number on the
  /// right. Decrements `width`, except after a format error (a width below 1).
  void PutSingle(int file, std::int16_t value, int& width);
  void PutLine(int file, std::string_view text);
  void PutNewLine(int file);

 private:
  [[nodiscard]] std::ofstream& Stream(int file);
  void Write(int file, std::string_view text);
  void WriteMarker(int file, std::string_view marker);
  /// Runs a field writer. If it fails, the script is not complete.
  template <class Body>
  void Put(const char* name, int file, Body body);
  [[nodiscard]] static std::size_t Slot(int file) { return file == kSnrScript ? 1 : 0; }

  Pause* pause_;
  Diagnostics* diagnostics_;
  std::array<std::ofstream, 2> streams_;
  std::array<bool, 2> faulty_{};
};

}  // namespace skyhop::IONCAPModule
