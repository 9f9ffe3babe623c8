#include "ui/configuration/default_urls.h"

namespace skyhop {

const char* DefaultUrl(PanelText url) {
  switch (url) {
    case PanelText::kSFIURL:
      return "https://services.swpc.noaa.gov/text/45-day-ap-forecast.txt";
    case PanelText::kSSNURL:
      return "https://services.swpc.noaa.gov/json/solar-cycle/predicted-solar-cycle.json";
    case PanelText::kWWVURL:
      return "https://services.swpc.noaa.gov/text/wwv.txt";
    case PanelText::kURL0:
      return "https://www.swpc.noaa.gov/communities/radio-communications";
    case PanelText::kURL1:
      return "https://www.swpc.noaa.gov/communities/space-weather-enthusiasts";
    case PanelText::kURL2:
      return "https://services.swpc.noaa.gov/images/planetary-k-index.gif";
    default:
      return "";
  }
}

}  // namespace skyhop
