#include "spaceweather/current_conditions.h"

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::CurrentConditionsModule {
namespace {

/// The position after the first `marker` at or after `from`; npos if there is none.
std::size_t After(std::string_view text, std::string_view marker, std::size_t from) {
  const std::size_t found = text.find(marker, from);
  return found == std::string_view::npos ? found : found + marker.size();
}

/// `text` trimmed when it is a non-negative integer, else empty.
std::string NumberOrNothing(std::string_view text) {
  const std::string_view trimmed = Trim(text);
  try {
    if (ToInteger(trimmed) >= 0) return std::string(trimmed);
  } catch (const Error&) {
    // Not a number, so return an empty text.
  }
  return {};
}

/// The value between `start` and the next `end_marker`.
std::optional<std::string> ValueUpTo(std::string_view text, std::size_t start,
                                     std::string_view end_marker) {
  if (start == std::string_view::npos) return std::nullopt;
  const std::size_t end = text.find(end_marker, start);
  if (end == std::string_view::npos) return std::nullopt;
  return NumberOrNothing(text.substr(start, end - start));
}

}  // namespace

Bulletin ParseBulletin(std::string_view text) {
  Bulletin bulletin;
  bulletin.flux = ValueUpTo(text, After(text, "Solar flux ", 0), " and");
  const std::size_t k_index = After(text, "K-index ", 0);
  if (k_index != std::string_view::npos) {
    bulletin.k_index = ValueUpTo(text, After(text, "was ", k_index), ".");
  }
  return bulletin;
}

std::string BulletinText(std::string_view text) {
  std::string kept;
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end != std::string_view::npos;
       end = text.find('\n', start)) {
    const std::string line = ReplaceAll(text.substr(start, end - start), "\r", "");
    if (!line.starts_with(':') && !line.starts_with('#')) kept += line + "\r\n";
    start = end + 1;
  }
  if (kept.size() > 2) kept.resize(kept.size() - 2);
  return kept;
}

void Conditions::Update() {
  diagnostics_->Trap("CurrentConditionsModule.Update", [&] {
    procedure_->Run({
        .kind = DownloadKind::kCurrentConditions,
        .file_name = "SolarForecast.txt",
        .status = "downloading SFI",
        .url_line = "CurrentConditionsModule.Update, theURL = ",
        .missing_url = "No 'Predicted Solar and Geomagnetic Conditions' URL specified in the "
                       "Configuration window's 'Prediction URLs' panel",
        .failed = "unable to download current conditions from ",
        .missing_file = "CurrentConditionsModule.Update: downloading current conditions from ",
        .empty_file = "CurrentConditionsModule.Update: downloaded current conditions from ",
        .complete_line = "CurrentConditionsModule.Update complete",
        .report = [&](const std::string& message) { CurrentConditionsError(message); },
        .on_failure =
            [&](const std::string& message) {
              origins_->Failed(SolarValue::kFlux, message);
              origins_->Failed(SolarValue::kKindex, message);
            },
        .before_fetch = [] {},
        .parse =
            [&](const std::string& content, const std::string& url) {
              UseBulletin(content, url);
              return true;
            },
    });
  });
}

void Conditions::UseBulletin(const std::string& content, const std::string& url) {
  diagnostics_->DebugLog(
      "CurrentConditionsModule.LoadSolarHistory: processing downloaded current conditions");
  const Bulletin bulletin = ParseBulletin(content);
  if (bulletin.flux) host_->PutValue(SolarValue::kFlux, *bulletin.flux);
  if (bulletin.k_index) host_->PutValue(SolarValue::kKindex, *bulletin.k_index);
  if (display_->Visible()) display_->SetBulletin(BulletinText(content));
  // Save last, so that a failing store loses the origins only.
  NoteOrigin(SolarValue::kFlux, bulletin.flux, url);
  NoteOrigin(SolarValue::kKindex, bulletin.k_index, url);
}

void Conditions::NoteOrigin(SolarValue value, const std::optional<std::string>& text,
                            const std::string& url) {
  if (!text) {
    origins_->Failed(value, "the bulletin from " + url + " does not mention the value");
  } else if (text->empty()) {
    origins_->Failed(value, "the bulletin from " + url + " has no number for it");
  } else {
    origins_->Downloaded(value, *text, url);
  }
}

void Conditions::CurrentConditionsError(const std::string& message) {
  messages_->Show(message, "Skyhop Current Conditions");
  diagnostics_->DebugLog("CurrentConditionsModule.CurrentConditionsError: " + message);
}

}  // namespace skyhop::CurrentConditionsModule
