#pragma once

namespace skyhop::default_addresses {

// The web addresses of a fresh installation, all of NOAA's Space Weather Prediction Center.

inline constexpr const char* kForecast =
    "https://services.swpc.noaa.gov/text/45-day-ap-forecast.txt";
inline constexpr const char* kSunspotNumber =
    "https://services.swpc.noaa.gov/json/solar-cycle/predicted-solar-cycle.json";
inline constexpr const char* kCurrentConditions = "https://services.swpc.noaa.gov/text/wwv.txt";

/// The three web pages of the menu, in its order.
inline constexpr const char* kPropagationPage =
    "https://www.swpc.noaa.gov/communities/radio-communications";
inline constexpr const char* kEnthusiastsPage =
    "https://www.swpc.noaa.gov/communities/space-weather-enthusiasts";
inline constexpr const char* kKIndexPicture =
    "https://services.swpc.noaa.gov/images/planetary-k-index.gif";

}  // namespace skyhop::default_addresses
