#include "app/predict/options.h"

#include <CLI/CLI.hpp>
#include <map>

#include "app/predict/exit_status.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "engine/prediction_form.h"

namespace skyhop {
namespace {

constexpr const char* kFooter =
    R"(Places are a grid square (IO91wm), decimal degrees (51.5,-0.12; north and east
positive) or degrees, minutes and seconds (51 30 N, 0 7 W).

Exit status: 0 prediction made; 1 output or program folder cannot be written;
2 invalid parameters; 3 the engine failed, its results cannot be read or answer
another question, or it is missing and --no-fallback was given; 4 time-out.

Example: skyhop-predict --from FN20 --to IO91wm --sfi 150 --svg prediction.svg)";

/// Accepts a text if the whole of it is a number.
const CLI::Validator kNumber(
    [](std::string& text) {
      return WholeNumberText(text) ? std::string() : "\"" + text + "\" is not a number";
    },
    "NUMBER");

/// Accepts an empty text, or a number that the engines' fields can hold.
const CLI::Validator kSunspotNumber(
    [](std::string& text) {
      const std::optional<double> value = WholeNumberText(text);
      if (Trim(text).empty() || (value && *value >= 0 && *value < 1000)) return std::string();
      return "\"" + text + "\" is not a number from 0 to 999";
    },
    "NUMBER");

/// Accepts a number that the engines' field of kilowatts can hold. The parameters' own validation
/// refuses too small ones.
const CLI::Validator kPower(
    [](std::string& text) {
      const std::optional<double> value = WholeNumberText(text);
      return value && *value <= 999990 ? std::string()
                                       : "\"" + text + "\" is not a number up to 999990";
    },
    "NUMBER");

const CLI::Validator kNumberOrNothing(
    [](std::string& text) {
      return Trim(text).empty() || WholeNumberText(text) ? std::string()
                                                         : "\"" + text + "\" is not a number";
    },
    "NUMBER");

/// Adds an option that maps words to values.
template <class Value>
void AddWords(CLI::App& app, const std::string& name, std::optional<Value>& target,
              const std::map<std::string, Value>& words, const std::string& description) {
  std::vector<std::string> names;
  names.reserve(words.size());
  for (const auto& [word, value] : words) names.push_back(word);
  app.add_option_function<std::string>(
         name, [&target, words](const std::string& word) { target = words.at(LowerCase(word)); },
         description)
      ->check(CLI::IsMember(names, CLI::ignore_case));
}

void AddStationOptions(CLI::App& app, PredictOptions& options) {
  app.add_option("--from", options.from, "Your station")->type_name("PLACE");
  app.add_option("--to", options.to, "The DX station")->type_name("PLACE");
  AddWords<int>(app, "--path", options.path,
                {{"short", path_option::kShort}, {"long", path_option::kLong}},
                "Way round the earth (default: short)");
  AddWords<int>(
      app, "--direction", options.direction,
      {{"to", direction_option::kToTheDXStation}, {"from", direction_option::kFromTheDXStation}},
      "Predict your signal at the DX station, or the DX station's at yours (default: to)");
  const std::map<std::string, int> noise = {
      {"industrial", 0}, {"residential", 1}, {"rural", 2}, {"remote", 3}};
  AddWords<int>(app, "--noise", options.noise, noise,
                "Man-made noise at your station (default: rural)");
  AddWords<int>(app, "--dx-noise", options.dx_noise, noise,
                "Man-made noise at the DX station (default: rural)");
  app.add_option("--power", options.power, "Your transmitter's power in watts (default: 1500)")
      ->check(kPower);
  AddWords<int>(app, "--dx-power", options.dx_power,
                {{"5", 0}, {"20", 1}, {"100", 2}, {"500", 3}, {"1500", 4}},
                "The DX station's power in watts (default: 100)");
  app.add_option("--takeoff", options.takeoff, "Minimum take-off angle in degrees (default: 3)")
      ->check(kNumber);
  const auto antenna = [&](const char* name, std::optional<std::string>& target,
                           const std::string& whose) {
    app.add_option(name, target,
                   whose +
                       " antenna: a file of the engine's \"antennas\" folder, or the dBi of an "
                       "isotropic one (default: 0). For icepac and voacap")
        ->type_name("FILE|DBI");
  };
  antenna("--antenna", options.antenna, "Your");
  antenna("--dx-antenna", options.dx_antenna, "The DX station's");
  app.add_option("--azimuth", options.azimuth,
                 "Main beam of your antenna file in degrees (default: the path's bearing)")
      ->check(kNumber);
  app.add_option("--dx-azimuth", options.dx_azimuth, "The same at the DX station")->check(kNumber);
}

void AddConditionOptions(CLI::App& app, PredictOptions& options) {
  app.add_option("--date", options.date, "UTC date, dd-mmm-yy or yyyy-mm-dd (default: today)")
      ->type_name("DATE");
  app.add_option("--sfi", options.sfi, "Solar flux index, 64 to 400 (default: 100)")
      ->check(kNumberOrNothing);
  app.add_option("--ssn", options.ssn,
                 "Smoothed sunspot number (default: derived from the solar flux)")
      ->check(kSunspotNumber);
  app.add_option("--k", options.k_index, "Geomagnetic K index (default: 1)")->check(kNumber);
  app.add_option("--snr", options.snr,
                 "Required signal-to-noise ratio in dB in 1 Hz, -30 to 99 (default: 24)")
      ->check(kNumber);
  app.add_option("--availability", options.availability,
                 "Required circuit reliability in percent, below 100 (default: 10)")
      ->check(kNumber);
}

void AddProgramOptions(CLI::App& app, PredictOptions& options) {
  AddWords<EngineChoice>(app, "--engine", options.engine,
                         {{"auto", EngineChoice::kNone},
                          {"ioncap", EngineChoice::kIonCap},
                          {"icepac", EngineChoice::kIcePac},
                          {"voacap", EngineChoice::kVoaCap},
                          {"voacap-snr", EngineChoice::kVoaCapSnr}},
                         "Propagation engine; auto is voacap where one is installed, else ioncap "
                         "(default: auto)");
  app.add_flag("--no-fallback", options.no_fallback,
               "Fail (status 3) where the built-in estimate would take the engine's place");
  app.add_flag("--engines", options.list_engines,
               "List the engines that were found, with --json as JSON, and predict nothing");
  app.add_flag("--settings", options.use_settings,
               "Start from the stored settings instead of the defaults");
  const auto format = [&](const char* name, OutputFormat value, const char* description) {
    return app.add_flag_callback(
        name, [&options, value] { options.format = value; }, description);
  };
  CLI::Option* csv = format("--csv", OutputFormat::kCsv, "Print comma-separated values");
  CLI::Option* json = format("--json", OutputFormat::kJson, "Print JSON");
  csv->excludes(json);
  app.add_option("--svg", options.svg_file, "Draw the chart into this file")->type_name("FILE");
  app.add_flag("--deck", options.deck_only, "Print the engine's input deck and run nothing")
      ->excludes(csv, json);
  app.add_option("--timeout", options.timeout, "Longest time to wait for the engine (default: 60)")
      ->check(CLI::Range(0.001, 86400.0))
      ->type_name("SECONDS");
  app.add_flag("--verbose", options.verbose, "Write the debug log to standard error");
}

}  // namespace

ParsedCommandLine ParseCommandLine(int argc, const char* const* argv) {
  ParsedCommandLine parsed;
  CLI::App app("Predicts on which HF bands two stations will hear each other over a day.",
               "skyhop-predict");
  app.footer(kFooter);
  app.set_version_flag("--version", std::string("skyhop-predict ") + VersionText());
  app.get_formatter()->column_width(26);
  AddStationOptions(app, parsed.options);
  AddConditionOptions(app, parsed.options);
  AddProgramOptions(app, parsed.options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    parsed.exit_status = app.exit(error) == 0 ? exit_status::kSuccess : exit_status::kInvalid;
  }
  return parsed;
}

}  // namespace skyhop
