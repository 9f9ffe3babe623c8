#pragma once

#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/pause.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/deck_writer.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/parameters.h"
#include "engine/results.h"
#include "engine/results_table.h"
#include "engine/run_control.h"

namespace skyhop {

/// The parts that make a chart's prediction, wired to each other: the parameter set, the decks, the
/// run of an engine and the table of its results.
struct PredictionEngine {
  struct Collaborators {
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    const Clock& clock;
    UserMessages& messages;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
  };

  explicit PredictionEngine(const Collaborators& with)
      : parameters(with.messages, with.settings, with.diagnostics),
        decks(with.pause, with.diagnostics),
        results(table, with.messages, with.diagnostics),
        run({parameters, decks, results, with.launcher, with.host, with.pause, with.clock,
             with.messages, with.settings, with.diagnostics}) {}

  ResultsTable table;
  IONCAPModule::Parameters parameters;
  IONCAPModule::DeckWriter decks;
  IONCAPModule::Results results;
  IONCAPModule::RunControl run;
};

}  // namespace skyhop
