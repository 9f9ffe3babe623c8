#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "interop/link_transport.h"
#include "interop/peer_window.h"

namespace skyhop {

/// The form `DDEClient`: holds the values that peers publish and hands changes on to the window.
/// Its topic of the same name takes the announcements of peers that start.
class DDEClient : public LinkTopic {
 public:
  /// Both must outlive this object.
  DDEClient(PeerWindow& window, Diagnostics& diagnostics)
      : window_(&window), diagnostics_(&diagnostics) {}

  /// Called with the role of a peer that announced its start.
  void SetStartListener(std::function<void(std::int16_t role)> listener) {
    on_start_ = std::move(listener);
  }

  /// A peer's text: its role in three digits and a word. "start" announces it; another word does
  /// nothing.
  void Form_LinkExecute(const std::string& command);
  /// A linked value changed. Errors are reported under "DDEClient.<control>_Change".
  void Change(LinkControl control, const std::string& text);
  /// The peer that published a value is gone.
  void Forget(LinkControl control);

  [[nodiscard]] const std::string& Text(LinkControl control) const;
  /// The transceiver's frequency in kHz; nothing while it is unknown.
  [[nodiscard]] std::optional<double> Frequency() const { return frequency_; }

  void Execute(const std::string& command) override { Form_LinkExecute(command); }
  [[nodiscard]] std::optional<std::string> Request(const std::string&) override {
    return std::nullopt;
  }

 private:
  void Freq_Change(const std::string& text);

  PeerWindow* window_;
  Diagnostics* diagnostics_;
  std::function<void(std::int16_t role)> on_start_;
  std::array<std::string, kLinkControlCount> texts_;
  std::optional<double> frequency_;
};

}  // namespace skyhop
