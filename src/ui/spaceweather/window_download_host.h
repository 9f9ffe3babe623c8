#pragma once

#include "spaceweather/download_host.h"
#include "ui/shared/configuration.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The field that holds a value.
[[nodiscard]] TextField FieldOf(SolarValue value);

/// Gives downloads access to the prediction window and the configuration. Without a window, changes
/// to it are dropped.
class WindowDownloadHost : public DownloadHost {
 public:
  explicit WindowDownloadHost(const Configuration& configuration)
      : configuration_(&configuration) {}

  void Attach(DownloadWindow* window) { window_ = window; }

  [[nodiscard]] std::string Url(DownloadKind kind) const override;
  void EnableDownloads(bool enable) override;
  void ShowStatus(const std::string& status) override;
  void PutValue(SolarValue value, const std::string& text) override;

 private:
  const Configuration* configuration_;
  DownloadWindow* window_ = nullptr;
};

}  // namespace skyhop
