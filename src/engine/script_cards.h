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

/// File numbers of the two scripts that can be open at a time.
inline constexpr int kPredictionScript = 21;
inline constexpr int kSnrScript = 22;

/// Deletes a file if there is one: up to 11 attempts, 50 ms apart, because an engine or a virus
/// scanner may still hold it. Returns whether the file is gone. A folder is never deleted.
[[nodiscard]] bool DeleteWithRetries(const std::filesystem::path& file, Pause& pause);

/// Opens, fills and closes the engines' input scripts: fixed columns, one card a line, every line
/// ended by CR LF.
///
/// The field writers end no line. A value too wide for its field is written in full, which shifts
/// the later columns; a format that makes no sense writes "***Format Error***" instead. Each writer
/// reports its own failures (a file number that is not open among them) and returns.
class ScriptCards {
 public:
  /// Both must outlive this object.
  ScriptCards(Pause& pause, Diagnostics& diagnostics)
      : pause_(&pause), diagnostics_(&diagnostics) {}

  /// Deletes an old file of that name and opens a new one; up to 11 attempts each. Returns its
  /// number, or -1 when the file could not be prepared (the error log says why).
  [[nodiscard]] int InitializeScript(const std::filesystem::path& file, bool snr);

  /// Closes a script. Returns whether all its fields were written, none of them replaced by an
  /// error marker, and have reached the file; otherwise the error log says why not.
  bool CloseScript(int file);

  /// `text` left-justified in `width` columns; a longer text is cut.
  void PutString(int file, std::string_view text, int width);
  /// `text` right-justified; a longer one is replaced by "***PutRightString Overflow error***".
  void PutRightString(int file, std::string_view text, int width);
  /// `value` with zeros on the left up to `width` digits, a minus sign before them. A negative
  /// width puts the format error into the prediction script, whichever file was given.
  void PutInteger(int file, std::int16_t value, int width);
  /// `value` with an implied decimal point. `format` is width.decimals, as 5.2. The product with
  /// the power of ten is formed in single precision and rounded half away from zero.
  void PutFloat(int file, float value, float format);
  /// `value` right-justified in width - 1 columns, then a period. A longer number is cut on the
  /// right. `width` is left one smaller, except after a format error (a width below 1).
  void PutSingle(int file, std::int16_t value, int& width);
  void PutLine(int file, std::string_view text);
  void PutNewLine(int file);

 private:
  [[nodiscard]] std::ofstream& Stream(int file);
  void Write(int file, std::string_view text);
  void WriteMarker(int file, std::string_view marker);
  /// Runs a field writer; a script in which one failed is no complete script.
  template <class Body>
  void Put(const char* name, int file, Body body);
  [[nodiscard]] static std::size_t Slot(int file) { return file == kSnrScript ? 1 : 0; }

  Pause* pause_;
  Diagnostics* diagnostics_;
  std::array<std::ofstream, 2> streams_;
  std::array<bool, 2> faulty_{};
};

}  // namespace skyhop::IONCAPModule
