#include "interop/dde_server.h"

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr const char* kName = "DDEServer.Form_LinkExecute";
constexpr std::size_t kSenderDigits = 3;

}  // namespace

const DDEServer::Command DDEServer::kCommands[] = {
    {"test", &DDEServer::Test, true},           {"shutdown", &DDEServer::Shutdown, true},
    {"iconify", &DDEServer::Iconify, true},     {"activate", &DDEServer::Activate, true},
    {"resetwindows", &DDEServer::ResetWindows}, {"newwwv", &DDEServer::NewWwv},
    {"setpower", &DDEServer::SetPower},         {"predict", &DDEServer::Predict},
    {"predsp", &DDEServer::PredictShortPath},   {"predlp", &DDEServer::PredictLongPath},
    {"predfmp", &DDEServer::PredictFrequency},  {"reqsnr", &DDEServer::RequestSnr},
};

void DDEServer::Form_LinkExecute(const std::string& command) {
  if (with_.diagnostics.GetDebug()) {
    with_.diagnostics.DebugLog(std::string(kName) + ": " + command);
  }
  if (busy_) {
    const Command* const known = Find(command);
    if (known != nullptr && known->at_once) {
      CarryOut(command);
    } else {
      Postpone(command);
    }
    return;
  }
  busy_ = true;
  CarryOut(command);
  while (!waiting_.empty()) {
    const std::string next = std::move(waiting_.front());
    waiting_.pop_front();
    CarryOut(next);
  }
  busy_ = false;
}

/// The command that a text with its sender begins with; null when there is none.
const DDEServer::Command* DDEServer::Find(std::string_view text) {
  if (text.size() < kSenderDigits) return nullptr;
  text.remove_prefix(kSenderDigits);
  for (const Command& known : kCommands) {
    const std::string_view word = known.word;
    if (EqualsIgnoringCase(text.substr(0, word.size()), word)) return &known;
  }
  return nullptr;
}

void DDEServer::Postpone(const std::string& command) {
  with_.diagnostics.Trap(kName, [&] {
    // Repeating the last waiting command at once has no effect. After another command it may have
    // one.
    const bool again = !waiting_.empty() && waiting_.back() == command;
    if (again || waiting_.size() >= kMostWaiting) {
      with_.diagnostics.DebugLog("   dropped: another command waits for the user");
    } else {
      waiting_.push_back(command);
    }
  });
}

void DDEServer::CarryOut(const std::string& command) {
  with_.diagnostics.Trap(kName, [&] {
    const std::int16_t sender = ToInteger(std::string_view(command).substr(0, kSenderDigits));
    if (command.size() < kSenderDigits) {
      throw Error(errors::kTypeMismatch, "the command has no role of three digits");
    }
    const Command* const known = Find(command);
    if (known == nullptr) return;
    sender_ = sender;
    (this->*known->action)(command.substr(kSenderDigits + std::string_view(known->word).size()));
  });
}

void DDEServer::Test(const std::string& /*argument*/) {
  // The peer only needs to know that the command was accepted.
}

void DDEServer::Shutdown(const std::string& /*argument*/) {
  with_.target.SetShutdownTrigger();
}

void DDEServer::Iconify(const std::string& /*argument*/) {
  DDECommon::Iconify(with_.windows, with_.diagnostics);
}

void DDEServer::Activate(const std::string& /*argument*/) {
  DDECommon::Activate(with_.main_window, with_.diagnostics);
}

void DDEServer::ResetWindows(const std::string& argument) {
  with_.target.ResetWindows(ToLong(argument));
}

void DDEServer::NewWwv(const std::string& argument) {
  with_.records.ParseRecord(argument);
  const std::string flux = Field(2);
  const std::string k_index = Field(4);
  with_.target.SetSpaceWeather(flux, k_index);
}

void DDEServer::SetPower(const std::string& argument) {
  with_.target.SetTransmitterPower(std::string(Trim(argument)));
}

void DDEServer::Predict(const std::string& argument) {
  StartPrediction(std::nullopt, argument);
}

void DDEServer::PredictShortPath(const std::string& argument) {
  StartPrediction(true, argument);
}

void DDEServer::PredictLongPath(const std::string& argument) {
  StartPrediction(false, argument);
}

void DDEServer::StartPrediction(std::optional<bool> short_path, const std::string& argument) {
  const std::string_view value = Trim(argument);
  with_.target.PredictForPeer({true, short_path}, value.empty() ? "0" : std::string(value));
}

void DDEServer::PredictFrequency(const std::string& argument) {
  with_.records.ParseRecord(argument);
  const PeerRequest request = {Field(5) == "D", Field(3) == "S"};
  const std::string frequency = Field(1);
  const std::string mode = ModeField(2);
  const std::string snr = with_.point_prediction.ValidatedSNR(Field(4));
  with_.target.FreqPredictForPeer(request, frequency, mode, snr);
}

void DDEServer::RequestSnr(const std::string& argument) {
  with_.records.ParseRecord(argument);
  SNRRequest request;
  request.sender = sender_;
  request.mode = ModeField(2);
  request.fourth = Field(4);
  request.first = Field(1);
  request.snr = with_.point_prediction.ValidatedSNR(Field(3));
  with_.point_prediction.PredictSNR(request);
}

std::string DDEServer::Field(std::int16_t position) {
  return with_.records.GetToken(position).value;
}

std::string DDEServer::ModeField(std::int16_t position) {
  std::string mode = UpperCase(Field(position));
  return mode == "PSK" ? "PSK31" : mode;
}

}  // namespace skyhop
