#include "ui/prediction/peer_inputs.h"

#include <algorithm>
#include <utility>

#include "common/text.h"

namespace skyhop {
namespace {

/// More than any value needs.
constexpr std::size_t kLongestValue = 100;

/// More than any transceiver has.
constexpr std::size_t kMostUnknownModes = 20;

/// A text of one line, not too long to be shown.
bool IsPlain(const std::string& text) {
  return !text.empty() && text.size() <= kLongestValue &&
         std::none_of(text.begin(), text.end(),
                      [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

}  // namespace

PeerWindow::FollowedBand PeerInputs::FollowFrequency(double frequency) {
  return with_.diagnostics.Trap("IonCap.FollowFrequency", FollowedBand(), [&] {
    FollowedBand followed = with_.point.FollowFrequency(frequency);
    if (on_band_) on_band_();
    return followed;
  });
}

void PeerInputs::Follow(LinkControl control, const std::string& text) {
  switch (control) {
    case LinkControl::kSFI:
      return with_.fields.TakeFromPeer(TextField::kFlux, text);
    case LinkControl::kK:
      return with_.fields.TakeFromPeer(TextField::kKindex, text);
    case LinkControl::kMode:
      return UseMode(text);
    default:
      // No input takes the A index; the frequency and places have operations of their own.
      return;
  }
}

void PeerInputs::Forget(LinkControl control) {
  with_.diagnostics.Trap("IonCap.Forget", [&] {
    switch (control) {
      case LinkControl::kFreq:
        with_.point.ForgetFrequency();
        if (on_band_) on_band_();
        return;
      case LinkControl::kDXLatitude:
      case LinkControl::kDXLongitude:
      case LinkControl::kDXPrefix:
        tessera_ = {};
        return;
      default:
        // The field keeps the last value.
        return;
    }
  });
}

void PeerInputs::LinksChanged() {
  with_.diagnostics.Trap("IonCap.LinksChanged", [&] {
    if (on_links_) on_links_();
  });
}

void PeerInputs::FollowSelection(const PeerPlace& place) {
  tessera_ = place;
  UseTesseraLocation();
}

void PeerInputs::FollowStation(const PeerPlace& place) {
  (void)UsePlace(TextField::kLocalLat, TextField::kLocalLon, place);
}

/// The country belongs to the coordinates: where those are refused, the one before stays.
void PeerInputs::UseTesseraLocation() {
  if (!with_.view.Checked(CheckBox::kDXTracksTesseraLocation)) return;
  if (!UsePlace(TextField::kDXLat, TextField::kDXLon, tessera_)) return;
  with_.parameters.SetLastPrefix(IsPlain(tessera_.country) ? tessera_.country : "");
}

/// Puts a peer's coordinates into a station's fields, both or none: one of them would move the
/// station to a place that is neither the old nor the new one. Returns whether they are there.
bool PeerInputs::UsePlace(TextField latitude, TextField longitude, const PeerPlace& place) {
  for (const auto& [field, text] :
       {std::pair(latitude, Trim(place.latitude)), std::pair(longitude, Trim(place.longitude))}) {
    if (text.empty() || !with_.fields.AcceptableFromPeer(field, std::string(text))) return false;
  }
  with_.fields.TakeFromPeer(latitude, place.latitude);
  with_.fields.TakeFromPeer(longitude, place.longitude);
  return true;
}

void PeerInputs::UseMode(const std::string& text) {
  if (Trim(text).empty()) return;
  const bool known = with_.modes.SelectNearest(text, [this] { with_.point.FollowTransceiver(); });
  if (!known) ReportUnknownMode(text.substr(0, kLongestValue));
}

/// Logs a mode the first time that it occurs. The number of such modes is limited, since a peer may
/// send anything.
void PeerInputs::ReportUnknownMode(const std::string& text) {
  if (unknown_modes_.size() >= kMostUnknownModes || !unknown_modes_.insert(text).second) return;
  with_.diagnostics.ErrorLog("the transceiver's mode \"" + text +
                             "\" is none of the configured modes; the mode stays as it is");
}

}  // namespace skyhop
