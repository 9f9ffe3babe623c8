#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "app/predict/options.h"
#include "common/diagnostics.h"
#include "common/pause.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/prediction_engine.h"
#include "platform/platform.h"

namespace skyhop {

/// Shows messages as lines and remembers that there were some.
class StreamMessages : public UserMessages {
 public:
  explicit StreamMessages(std::ostream& err) : err_(&err) {}
  void Show(const std::string& text, const std::string& caption) override;
  /// Writes a remark. It does not count as a message.
  void Note(const std::string& text);
  [[nodiscard]] int Count() const { return count_; }

 private:
  std::ostream* err_;
  int count_ = 0;
};

/// Knows no settings: every read yields the default.
class NoSettings : public SettingsStore {
 public:
  [[nodiscard]] std::string Read(const std::string&, const std::string&, const std::string&,
                                 const std::string& default_text) override {
    return default_text;
  }
  void Save(const std::string&, std::span<const SettingEntry>) override {}
};

/// All parts of the program, wired for a run without a window.
class PredictionProgram {
 public:
  PredictionProgram(const PredictOptions& options, std::ostream& err);

  PredictionForm form;
  StreamMessages messages;
  std::filesystem::path folder;
  /// The engine was not chosen by the user: it is the automatic one.
  bool automatic_engine = false;
  /// Error lines since the last look.
  std::vector<std::string> error_lines;

 private:
  std::unique_ptr<Clock> clock_;
  std::unique_ptr<MachineFacts> facts_;
  SleepingPause pause_;
  std::unique_ptr<SettingsStore> store_;

 public:
  std::unique_ptr<EngineLauncher> launcher;
  std::unique_ptr<EngineHost> host;
  Diagnostics diagnostics;
  Common::Settings settings;
  PredictionEngine engine;

  [[nodiscard]] const Clock& GetClock() const { return *clock_; }
};

}  // namespace skyhop
