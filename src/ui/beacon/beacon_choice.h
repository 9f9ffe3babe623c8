#pragma once

#include <array>
#include <optional>
#include <string>

#include "beacon/follower.h"
#include "beacon/selection.h"
#include "common/settings.h"
#include "ui/beacon/beacon_view.h"
#include "ui/beacon/known_beacons.h"

namespace skyhop {

/// The user's choices in the beacon window: its check boxes and the selected beacons. It saves
/// changes in the settings, except for kFollow: a program that starts must not tune a transceiver
/// that is in use.
class BeaconChoice {
 public:
  BeaconChoice(BeaconView& view, const Common::Settings& settings, Diagnostics& diagnostics)
      : view_(&view), settings_(&settings), diagnostics_(&diagnostics) {}

  /// Reads the saved choices and shows them, except for the selected beacon: see Offer.
  void Restore();
  /// Lists the beacons, frequencies or directions in the view and selects the user's choice, or the
  /// first entry if the schedule lacks it.
  void Offer(const KnownBeacons& known);

  void SelectBy(int index, const KnownBeacons& known);
  /// The user selects an entry of the list that Offer made.
  void Choose(int index, const KnownBeacons& known);
  void Check(BeaconCheck check, bool checked);

  [[nodiscard]] bool Checked(BeaconCheck check) const {
    return checked_.at(static_cast<std::size_t>(check));
  }
  [[nodiscard]] const BeaconModule::Selection& Selected() const { return selection_; }
  /// The transmission to listen for. New levels do not change it within a slot: a user who hears
  /// one beacon must not mark another.
  [[nodiscard]] const std::optional<BeaconModule::Transmission>& Target(const KnownBeacons& known,
                                                                        UtcTime now);
  /// Nothing while the user does not follow the beacons.
  [[nodiscard]] BeaconModule::FollowOptions Following() const;

 private:
  struct SlotTarget {
    BeaconModule::Slot slot;
    BeaconModule::Selection selection;
    int revision = 0;  ///< of the known beacons
    std::optional<BeaconModule::Transmission> target;
  };

  void SaveSelection();

  BeaconView* view_;
  const Common::Settings* settings_;
  Diagnostics* diagnostics_;
  std::array<bool, kBeaconCheckWords.size()> checked_{};
  BeaconModule::Selection selection_;
  // The schedule may lack these.
  double wanted_frequency_ = 0;  ///< kHz
  std::string wanted_call_;
  std::optional<SlotTarget> slot_target_;
};

}  // namespace skyhop
