#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "spaceweather/forecast_table.h"

namespace skyhop::SolarForecastModule {

/// Turns a block of the forecast into a list in place: every blank, carriage return and line feed
/// becomes a comma, one for one.
void FormatForecast(std::string& block);

/// When the forecast was issued: what follows ":Issued: " up to the line feed or the text's end;
/// nothing if the text has no such line.
[[nodiscard]] std::optional<std::string> IssuedText(std::string_view text);

/// Reads the 45-day forecast, its A indices first and the flux then, into the slots from
/// kFirstDaySlot downward. Days before `today`, a day of the month, are skipped by their number
/// alone. An A index gives validity, day and K index of its slot too.
///
/// Returns an empty text, or what is wrong with the forecast ("contains unrecognizable ...");
/// slots filled so far are kept then.
[[nodiscard]] std::string ParseForecast(std::string_view text, int today, ForecastTable& table);

}  // namespace skyhop::SolarForecastModule
