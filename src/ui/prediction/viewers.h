#pragma once

#include <filesystem>
#include <string>

#include "common/settings.h"
#include "engine/engine_launcher.h"
#include "engine/run_control.h"
#include "ui/prediction/input_fields.h"
#include "ui/shared/configuration.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// Shows the deck and the results of the last run: in the viewer that the user has set, else in a
/// window of the program.
class FileViewer {
 public:
  struct Collaborators {
    const IONCAPModule::RunControl& run;
    TextWindow& window;
    InputFields& fields;
    EngineLauncher& launcher;
    const Common::Settings& settings;
  };

  explicit FileViewer(const Collaborators& collaborators) : with_(collaborators) {}

  void Show();

 private:
  void ShowInViewer(const std::string& viewer, const std::filesystem::path& file);

  Collaborators with_;
};

/// Opens pages in the user's browser: the help and the web pages of the menu.
class PageViewer {
 public:
  struct Collaborators {
    PredictionView& view;
    const Configuration& configuration;
    InputFields& fields;
    std::filesystem::path help_file;
  };

  explicit PageViewer(Collaborators collaborators) : with_(std::move(collaborators)) {}

  void ShowHelp();
  /// Offers the pages that have an address.
  void OfferPages();
  /// Opens the web page with this number, 0 to 3.
  void OpenPage(int page);

 private:
  Collaborators with_;
};

}  // namespace skyhop
