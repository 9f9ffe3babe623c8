#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "common/diagnostics.h"
#include "interop/command_target.h"
#include "interop/dde_common.h"
#include "interop/link_transport.h"

namespace skyhop {

/// The topic "DDEServer", on which peers execute commands: three digits with the sender's role, the
/// command's word in any case, its argument. The server uses the first known word that the text
/// begins with and ignores unknown ones. It reports a text without role and does not carry it out.
///
/// One command runs to its end before the next. Commands that arrive while one waits for the user
/// (a message is shown) are carried out after it, up to kMostWaiting of them. The server drops
/// further ones, and a command that equals the last one waiting. "test", "shutdown", "iconify" and
/// "activate" change no input and never wait.
class DDEServer : public LinkTopic {
 public:
  static constexpr std::size_t kMostWaiting = 100;

  /// All must outlive the server.
  struct Collaborators {
    CommandTarget& target;
    SNRService& point_prediction;
    DDECommon::OpenWindows& windows;
    DDECommon::Window& main_window;
    DDECommon::Records& records;
    Diagnostics& diagnostics;
  };

  explicit DDEServer(Collaborators collaborators) : with_(collaborators) {}

  void Form_LinkExecute(const std::string& command);

  void Execute(const std::string& command) override { Form_LinkExecute(command); }
  [[nodiscard]] std::optional<std::string> Request(const std::string&) override {
    return std::nullopt;
  }

 private:
  struct Command {
    const char* word;
    void (DDEServer::*action)(const std::string& argument);
    bool at_once = false;  ///< carried out while another command waits for the user
  };
  static const Command kCommands[];

  [[nodiscard]] static const Command* Find(std::string_view text);
  void Postpone(const std::string& command);
  void CarryOut(const std::string& command);

  void Test(const std::string& argument);
  void Shutdown(const std::string& argument);
  void Iconify(const std::string& argument);
  void Activate(const std::string& argument);
  void ResetWindows(const std::string& argument);
  void NewWwv(const std::string& argument);
  void SetPower(const std::string& argument);
  void Predict(const std::string& argument);
  void PredictShortPath(const std::string& argument);
  void PredictLongPath(const std::string& argument);
  void PredictFrequency(const std::string& argument);
  void RequestSnr(const std::string& argument);

  void StartPrediction(std::optional<bool> short_path, const std::string& argument);
  [[nodiscard]] std::string Field(std::int16_t position);
  [[nodiscard]] std::string ModeField(std::int16_t position);

  Collaborators with_;
  std::int16_t sender_ = 0;
  bool busy_ = false;
  std::deque<std::string> waiting_;
};

}  // namespace skyhop
