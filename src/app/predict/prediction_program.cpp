#include "app/predict/prediction_program.h"

#include <ostream>

#include "common/program.h"

namespace skyhop {
namespace {

std::unique_ptr<SettingsStore> StoreFor(const PredictOptions& options) {
  if (options.use_settings) return platform::MakeSettingsStore();
  return std::make_unique<NoSettings>();
}

}  // namespace

void StreamMessages::Show(const std::string& text, const std::string& /*caption*/) {
  ++count_;
  Note(text);
}

void StreamMessages::Note(const std::string& text) {
  *err_ << "skyhop-predict: " << text << '\n';
}

PredictionProgram::PredictionProgram(const PredictOptions& options, std::ostream& err)
    : messages(err),
      folder(platform::ProgramFolder()),
      clock_(platform::MakeClock()),
      facts_(platform::MakeMachineFacts()),
      store_(StoreFor(options)),
      launcher(platform::MakeEngineLauncher()),
      host(platform::MakeEngineHost()),
      diagnostics(folder, *clock_, *facts_),
      settings(*store_, diagnostics),
      engine({*launcher, *host, pause_, *clock_, messages, settings, diagnostics}) {
  diagnostics.SetErrorListener([this](std::string_view line) { error_lines.emplace_back(line); });
  if (options.verbose) {
    diagnostics.SetDebugListener([&err](std::string_view line) { err << line << '\n'; });
  }
  diagnostics.SetDebug(
      settings.GetBooleanSetting(kProductName, "Configuration", "DiagMode", "False"));
}

}  // namespace skyhop
