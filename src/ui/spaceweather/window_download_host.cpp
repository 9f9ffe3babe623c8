#include "ui/spaceweather/window_download_host.h"

namespace skyhop {

TextField FieldOf(SolarValue value) {
  switch (value) {
    case SolarValue::kFlux:
      return TextField::kFlux;
    case SolarValue::kKindex:
      return TextField::kKindex;
    case SolarValue::kSunspotNumber:
      break;
  }
  return TextField::kSSN;
}

std::string WindowDownloadHost::Url(DownloadKind kind) const {
  switch (kind) {
    case DownloadKind::kForecast:
      return configuration_->Url(Address::kSFIURL);
    case DownloadKind::kCurrentConditions:
      return configuration_->Url(Address::kWWVURL);
    case DownloadKind::kSunspotNumber:
      break;
  }
  return configuration_->Url(Address::kSSNURL);
}

void WindowDownloadHost::EnableDownloads(bool enable) {
  if (window_ != nullptr) window_->EnableDownloads(enable);
}

void WindowDownloadHost::ShowStatus(const std::string& status) {
  if (window_ != nullptr) window_->ShowDownload(status);
}

void WindowDownloadHost::PutValue(SolarValue value, const std::string& text) {
  if (window_ != nullptr) window_->PutDownloaded(FieldOf(value), text);
}

}  // namespace skyhop
