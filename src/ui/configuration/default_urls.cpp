#include "ui/configuration/default_urls.h"

#include "common/default_addresses.h"

namespace skyhop {

const char* DefaultUrl(PanelText url) {
  switch (url) {
    case PanelText::kSFIURL:
      return default_addresses::kForecast;
    case PanelText::kSSNURL:
      return default_addresses::kSunspotNumber;
    case PanelText::kWWVURL:
      return default_addresses::kCurrentConditions;
    case PanelText::kURL0:
      return default_addresses::kPropagationPage;
    case PanelText::kURL1:
      return default_addresses::kEnthusiastsPage;
    case PanelText::kURL2:
      return default_addresses::kKIndexPicture;
    default:
      return "";
  }
}

}  // namespace skyhop
