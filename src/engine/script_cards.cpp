#include "engine/script_cards.h"

#include <cmath>
#include <string>

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr const char* kFormatError = "***Format Error***";
constexpr const char* kLineEnd = "\r\n";
constexpr int kAttempts = 11;
constexpr std::chrono::milliseconds kBetweenAttempts{50};

/// Runs `attempt` until it succeeds, at most 11 times.
template <class Attempt>
bool Retry(Pause& pause, Attempt attempt) {
  for (int count = 0; count < kAttempts; ++count) {
    if (count > 0) pause.Wait(kBetweenAttempts);
    if (attempt()) return true;
  }
  return false;
}

std::string Blanks(std::size_t count) {
  return std::string(count, ' ');
}

std::string ZeroPadded(std::string digits, int width) {
  const auto columns = static_cast<std::size_t>(width);
  if (digits.size() < columns) digits.insert(0, columns - digits.size(), '0');
  return digits;
}

}  // namespace

bool DeleteWithRetries(const std::filesystem::path& file, Pause& pause) {
  return Retry(pause, [&] {
    std::error_code error;
    const auto status = std::filesystem::symlink_status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) return true;
    // remove() would delete an empty folder that happens to bear the file's name.
    if (status.type() == std::filesystem::file_type::directory) return false;
    std::filesystem::remove(file, error);
    return !error || error == std::errc::no_such_file_or_directory;
  });
}

int ScriptCards::InitializeScript(const std::filesystem::path& file, bool snr) {
  return diagnostics_->Trap("IONCAPModule.InitializeScript", -1, [&] {
    const std::string tail = PathText(file) + ", SNR = " + BooleanText(snr);
    if (!DeleteWithRetries(file, *pause_)) {
      diagnostics_->ErrorLog("IONCAPModule.InitializeScript: unable to delete existing " + tail);
      return -1;
    }
    const int number = snr ? kSnrScript : kPredictionScript;
    std::ofstream& stream = streams_.at(Slot(number));
    if (stream.is_open()) stream.close();
    faulty_.at(Slot(number)) = false;
    const bool opened = Retry(*pause_, [&] {
      stream.clear();
      stream.open(file, std::ios::binary | std::ios::trunc);
      return stream.is_open();
    });
    if (!opened) {
      diagnostics_->ErrorLog("IONCAPModule.InitializeScript: unable to create " + tail);
      return -1;
    }
    return number;
  });
}

bool ScriptCards::CloseScript(int file) {
  return diagnostics_->Trap("IONCAPModule.CloseScript", false, [&] {
    std::ofstream& stream = Stream(file);
    stream.close();
    if (stream.fail()) {
      stream.clear();
      throw Error(errors::kDiskFull, "the script could not be written in full");
    }
    if (faulty_.at(Slot(file))) {
      diagnostics_->ErrorLog(
          "IONCAPModule.CloseScript: a field of the script could not be written");
      return false;
    }
    return true;
  });
}

std::ofstream& ScriptCards::Stream(int file) {
  if (file != kPredictionScript && file != kSnrScript) {
    throw Error(errors::kInvalidCall, "no script has the file number " + std::to_string(file));
  }
  std::ofstream& stream = streams_.at(Slot(file));
  if (!stream.is_open()) {
    throw Error(errors::kInvalidCall, "script file " + std::to_string(file) + " is not open");
  }
  return stream;
}

void ScriptCards::Write(int file, std::string_view text) {
  Stream(file).write(text.data(), static_cast<std::streamsize>(text.size()));
}

void ScriptCards::WriteMarker(int file, std::string_view marker) {
  Write(file, marker);
  faulty_.at(Slot(file)) = true;
}

template <class Body>
void ScriptCards::Put(const char* name, int file, Body body) {
  if (!diagnostics_->Trap(name, body)) faulty_.at(Slot(file)) = true;
}

void ScriptCards::PutString(int file, std::string_view text, int width) {
  Put("IONCAPModule.PutString", file, [&] {
    if (width < 0) return WriteMarker(file, kFormatError);
    const auto columns = static_cast<std::size_t>(width);
    std::string field(text.substr(0, columns));
    field.resize(columns, ' ');
    Write(file, field);
  });
}

void ScriptCards::PutRightString(int file, std::string_view text, int width) {
  Put("IONCAPModule.PutRightString", file, [&] {
    if (width < 0) return WriteMarker(file, kFormatError);
    const auto columns = static_cast<std::size_t>(width);
    if (text.size() > columns) return WriteMarker(file, "***PutRightString Overflow error***");
    Write(file, Blanks(columns - text.size()).append(text));
  });
}

void ScriptCards::PutInteger(int file, std::int16_t value, int width) {
  Put("IONCAPModule.PutInteger", file, [&] {
    // Write the marker into the prediction script even for an SNR script, because support looks for
    // it there.
    if (width < 0) return WriteMarker(kPredictionScript, kFormatError);
    Write(file, PaddedNumber(value, width));
  });
}

void ScriptCards::PutFloat(int file, float value, float format) {
  Put("IONCAPModule.PutFloat", file, [&] {
    const int width = static_cast<int>(format);
    const auto decimals =
        static_cast<int>(std::lround(10.0 * (static_cast<double>(format) - width)));
    if (width < 0 || decimals < 0 || width < decimals) return WriteMarker(file, kFormatError);
    const float product = value * std::pow(10.0F, static_cast<float>(decimals));
    if (!std::isfinite(product) || std::fabs(product) > 1e15F) {
      throw Error(errors::kOverflow, "Overflow: " + NumberText(value));
    }
    const long long rounded = std::llround(product);
    const std::string digits = ZeroPadded(std::to_string(std::llabs(rounded)), width);
    Write(file, rounded < 0 ? "-" + digits : digits);
  });
}

void ScriptCards::PutSingle(int file, std::int16_t value, int& width) {
  Put("IONCAPModule.PutSingle", file, [&] {
    if (width < 1) return WriteMarker(file, kFormatError);
    const int columns = width - 1;
    // A number text begins with the minus sign or with a blank in its place.
    std::string number = value < 0 ? std::to_string(value) : " " + std::to_string(value);
    const auto size = static_cast<std::size_t>(columns);
    if (number.size() > size) number.resize(size);
    Write(file, Blanks(size - number.size()) + number + ".");
    width = columns;
  });
}

void ScriptCards::PutLine(int file, std::string_view text) {
  Put("IONCAPModule.PutLine", file, [&] {
    Write(file, text);
    Write(file, kLineEnd);
  });
}

void ScriptCards::PutNewLine(int file) {
  Put("IONCAPModule.PutNewLine", file, [&] { Write(file, kLineEnd); });
}

}  // namespace skyhop::IONCAPModule
