#include "spaceweather/value_origins.h"

#include <charconv>
#include <vector>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr const char* kSection = "SpaceWeather";

constexpr std::array<SolarValue, kSolarValueCount> kValues = {
    SolarValue::kFlux, SolarValue::kKindex, SolarValue::kSunspotNumber};

/// The start of the value's keys.
std::string KeyOf(SolarValue value) {
  switch (value) {
    case SolarValue::kFlux:
      return "SFI";
    case SolarValue::kKindex:
      return "Kindex";
    case SolarValue::kSunspotNumber:
      break;
  }
  return "SSN";
}

std::size_t At(SolarValue value) {
  return static_cast<std::size_t>(value);
}

/// A stored time: seconds since the beginning of 1970, UTC.
std::optional<UtcTime> TimeFromText(const std::string& text) {
  long long seconds = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), seconds);
  constexpr long long year_10000 = 253402300800;
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  if (seconds < 0 || seconds >= year_10000) return std::nullopt;
  return UtcTime(std::chrono::seconds(seconds));
}

std::string TextFromTime(UtcTime time) {
  return std::to_string(std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count());
}

std::string Count(long long number, const std::string& unit) {
  return std::to_string(number) + " " + unit + (number == 1 ? "" : "s") + " ago";
}

}  // namespace

std::string AgeText(UtcTime then, UtcTime now) {
  using std::chrono::floor;
  const auto age = now - then;
  const auto minutes = floor<std::chrono::minutes>(age).count();
  const auto hours = floor<std::chrono::hours>(age).count();
  const auto days = floor<std::chrono::days>(age).count();
  // A clock that was put back makes an age negative.
  if (minutes < 1) return "just now";
  if (hours < 1) return Count(minutes, "minute");
  if (days < 2) return Count(hours, "hour");
  return Count(days, "day");
}

std::string MomentText(UtcTime time) {
  const HourMinute clock = UtcHourMinute(time);
  return DateText(UtcDate(time)) + " " + PaddedNumber(clock.hour, 2) + ":" +
         PaddedNumber(clock.minute, 2) + " UTC";
}

void ValueOrigins::Load() {
  for (const SolarValue value : kValues) {
    const auto stored = [&](const char* what) {
      return settings_->GetStringSetting(kProductName, kSection, KeyOf(value) + what, "");
    };
    const std::optional<UtcTime> time = TimeFromText(stored("Time"));
    origins_.at(At(value)).reset();
    if (time) origins_.at(At(value)) = Origin{stored("Value"), stored("Source"), *time};
  }
}

void ValueOrigins::Downloaded(SolarValue value, const std::string& text, const std::string& url) {
  const UtcTime now = clock_->UtcNow();
  origins_.at(At(value)) = Origin{text, std::string(Trim(url)), now};
  failures_.at(At(value)).reset();
  const std::vector<SettingEntry> entries = {
      {kSection, KeyOf(value) + "Value", text},
      {kSection, KeyOf(value) + "Source", url},
      {kSection, KeyOf(value) + "Time", TextFromTime(now)},
  };
  settings_->Store().Save(kProductName, entries);
}

void ValueOrigins::Failed(SolarValue value, const std::string& reason) {
  failures_.at(At(value)) = Failure{ReplaceAll(reason, "\n\n", " "), clock_->UtcNow()};
}

std::string ValueOrigins::Describe(SolarValue value, const std::string& text) const {
  const UtcTime now = clock_->UtcNow();
  const std::optional<Origin>& origin = origins_.at(At(value));
  std::string description;
  if (!origin) {
    description = "not downloaded so far";
  } else {
    const std::string when =
        AgeText(origin->time, now) + " (" + MomentText(origin->time) + ") from " + origin->url;
    description = origin->text == Trim(text)
                      ? "downloaded " + when
                      : "not the downloaded value, which was " + origin->text + ", " + when;
  }
  if (const std::optional<Failure>& failure = failures_.at(At(value))) {
    description += "\nlast attempt " + AgeText(failure->time, now) + ": " + failure->reason;
  }
  return description;
}

std::string ValueOrigins::Last(SolarValue value, const std::string& url) const {
  const std::optional<Origin>& origin = origins_.at(At(value));
  if (!origin) return "not downloaded so far";
  return origin->text + ", " + AgeText(origin->time, clock_->UtcNow()) + " (" +
         MomentText(origin->time) + ")" + (origin->url == Trim(url) ? "" : " from " + origin->url);
}

std::string ValueOrigins::LastFailure(SolarValue value) const {
  const std::optional<Failure>& failure = failures_.at(At(value));
  if (!failure) return {};
  return "; last attempt " + AgeText(failure->time, clock_->UtcNow()) + ": " + failure->reason;
}

}  // namespace skyhop
