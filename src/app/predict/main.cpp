#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "app/predict/exit_status.h"
#include "app/predict/options.h"
#include "app/predict/prediction_run.h"
#include "platform/platform.h"

int main(int argc, char** argv) {
  try {
    const std::vector<std::string> arguments = skyhop::platform::StartConsole(argc, argv);
    std::vector<const char*> words;
    words.reserve(arguments.size());
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    const skyhop::ParsedCommandLine command_line =
        skyhop::ParseCommandLine(static_cast<int>(words.size()), words.data());
    if (command_line.exit_status) return *command_line.exit_status;
    return skyhop::RunPrediction(command_line.options, std::cout, std::cerr);
  } catch (const std::exception& error) {
    std::cerr << "skyhop-predict: " << error.what() << '\n';
    return skyhop::exit_status::kOutputFailed;
  }
}
