#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "interop/link_transport.h"
#include "interop/peer_window.h"

namespace skyhop {

/// The form `DDEClient`: holds the values that peers publish and hands changes on to the window. It
/// collects changes until the next tick of their timer and hands on the last value of each item. So
/// a peer that publishes fast does not delay the window, and the parts of a place arrive together.
/// Its topic of the same name takes the announcements of peers that start.
class DDEClient : public LinkTopic {
 public:
  /// How long a change waits for others; too short to be seen.
  static constexpr std::chrono::milliseconds kValueDelay{20};

  /// All must outlive this object.
  DDEClient(PeerWindow& window, LinkTimer& timer, Diagnostics& diagnostics)
      : window_(&window), timer_(&timer), diagnostics_(&diagnostics) {}

  /// Called with the role of a peer that announced its start.
  void SetStartListener(std::function<void(std::int16_t role)> listener) {
    on_start_ = std::move(listener);
  }

  /// A peer's text: its role in three digits and a word. "start" announces it; other words are
  /// ignored.
  void Form_LinkExecute(const std::string& command);
  /// A linked value changed.
  void Change(LinkControl control, const std::string& text);
  /// Hands the changes since the last tick on. Errors are reported under
  /// "DDEClient.<control>_Change".
  void PeerValuesTimer_Tick();
  /// The peer that published a value is gone.
  void Forget(LinkControl control);

  /// The last text of a value, empty before the first one.
  [[nodiscard]] const std::string& Text(LinkControl control) const;
  /// The transceiver's frequency in kHz; nothing while it is unknown.
  [[nodiscard]] std::optional<double> Frequency() const { return frequency_; }

  void Execute(const std::string& command) override { Form_LinkExecute(command); }
  [[nodiscard]] std::optional<std::string> Request(const std::string&) override {
    return std::nullopt;
  }

 private:
  using Values = std::array<std::optional<std::string>, kLinkControlCount>;

  void HandOn(LinkControl control, const std::string& text);
  void Freq_Change(const std::string& text);

  PeerWindow* window_;
  LinkTimer* timer_;
  Diagnostics* diagnostics_;
  std::function<void(std::int16_t role)> on_start_;
  std::array<std::string, kLinkControlCount> texts_;
  Values waiting_;
  bool unreadable_frequency_ = false;  ///< already reported
  std::optional<double> frequency_;
};

}  // namespace skyhop
