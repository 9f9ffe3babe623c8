#include <exception>
#include <iostream>

#include "app/predict/exit_status.h"
#include "app/predict/options.h"
#include "app/predict/prediction_run.h"

int main(int argc, char** argv) {
  try {
    const skyhop::ParsedCommandLine command_line = skyhop::ParseCommandLine(argc, argv);
    if (command_line.exit_status) return *command_line.exit_status;
    return skyhop::RunPrediction(command_line.options, std::cout, std::cerr);
  } catch (const std::exception& error) {
    std::cerr << "skyhop-predict: " << error.what() << '\n';
    return skyhop::exit_status::kOutputFailed;
  }
}
