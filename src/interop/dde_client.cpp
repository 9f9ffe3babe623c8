#include "interop/dde_client.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "interop/dde_common.h"

namespace skyhop {
namespace {

constexpr std::size_t kRoleDigits = 3;
constexpr double kKilohertzPerMegahertz = 1000;
constexpr double kHighestKilohertz = 1e9;

constexpr std::array<const char*, kLinkControlCount> kHandlers = {
    "DDEClient.SFI_Change",
    "DDEClient.A_Change",
    "DDEClient.K_Change",
    "DDEClient.DXLatitude_Change",
    "DDEClient.DXLongitude_Change",
    "DDEClient.DXPrefix_Change",
    "DDEClient.LocalLatitude_Change",
    "DDEClient.LocalLongitude_Change",
    "DDEClient.Freq_Change",
    "DDEClient.Mode_Change",
};

/// Characters of a peer's text in a message.
constexpr std::size_t kLongestShown = 60;

std::size_t Index(LinkControl control) {
  return static_cast<std::size_t>(control);
}

/// Whether a value is part of the location that is selected in Tessera.
bool IsSelection(LinkControl control) {
  return control == LinkControl::kDXLatitude || control == LinkControl::kDXLongitude ||
         control == LinkControl::kDXPrefix;
}

/// Whether a value is part of the user's own location.
bool IsStation(LinkControl control) {
  return control == LinkControl::kLocalLatitude || control == LinkControl::kLocalLongitude;
}

/// Whether `mark` separates the digits into groups of three. The first group may be shorter.
bool IsGrouped(std::string_view digits, char mark) {
  for (bool first = true;; first = false) {
    const std::size_t end = std::min(digits.find(mark), digits.size());
    const std::string_view group = digits.substr(0, end);
    const bool whole = group.find_first_not_of("0123456789") == std::string_view::npos;
    if (!whole || group.empty() || group.size() > 3 || (!first && group.size() < 3)) return false;
    if (end == digits.size()) return true;
    digits.remove_prefix(end + 1);
  }
}

/// The number of a text with commas or several points, written with one point. Nothing for a text
/// that can be read in two ways, such as "14,025".
std::optional<std::string> PlainNumber(std::string_view text) {
  if (text.find_first_not_of("0123456789.,") != std::string_view::npos) return std::nullopt;
  const std::size_t first = text.find_first_of(".,");
  const std::size_t last = text.find_last_of(".,");
  if (first == std::string_view::npos || last == 0 || last + 1 == text.size()) return std::nullopt;
  const char decimal = text[last];
  std::string whole(text.substr(0, last));
  const std::string fraction(text.substr(last + 1));
  if (first == last) {
    if (whole.size() <= 3 && fraction.size() == 3) return std::nullopt;
  } else {
    const char group = text[first];
    if (!IsGrouped(whole, group)) return std::nullopt;
    // With one mark for both, the text consists of MHz, kHz and a fraction of kHz.
    const bool three_parts = std::count(whole.begin(), whole.end(), group) == 1;
    if (decimal == group && (!three_parts || fraction.size() > 3)) return std::nullopt;
    std::erase(whole, group);
  }
  return whole + "." + fraction;
}

/// The frequency of a transceiver's display in kHz; nothing when the text cannot be read.
std::optional<double> Kilohertz(std::string_view text) {
  std::optional<double> number = WholeNumberText(text);
  if (!number) {
    if (const auto plain = PlainNumber(Trim(text))) number = WholeNumberText(*plain);
  }
  const bool possible = number && *number >= 0 && *number <= kHighestKilohertz;
  return possible ? number : std::nullopt;
}

}  // namespace

void DDEClient::Form_LinkExecute(const std::string& command) {
  diagnostics_->Trap("DDEClient.Form_LinkExecute", [&] {
    const std::string_view text = command;
    const std::int16_t role = ToInteger(text.substr(0, kRoleDigits));
    if (text.size() < kRoleDigits) {
      throw Error(errors::kTypeMismatch, "the command has no role of three digits");
    }
    const std::string word(Trim(text.substr(kRoleDigits)));
    diagnostics_->DebugLog("DDEClient.Form_LinkExecute: " + DDECommon::ServerName(role) + " " +
                           word);
    if (EqualsIgnoringCase(word, "start") && on_start_) on_start_(role);
  });
}

void DDEClient::Change(LinkControl control, const std::string& text) {
  const bool first = std::none_of(waiting_.begin(), waiting_.end(),
                                  [](const auto& value) { return value.has_value(); });
  waiting_.at(Index(control)) = text;
  if (first) timer_->Start(kValueDelay);
}

void DDEClient::PeerValuesTimer_Tick() {
  timer_->Stop();
  const Values values = std::exchange(waiting_, {});
  // Store all texts before handing on the first change: a place consists of several texts.
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values.at(i)) texts_.at(i) = *values.at(i);
  }
  bool selection = false;
  bool station = false;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!values.at(i)) continue;
    const auto control = static_cast<LinkControl>(i);
    if (IsSelection(control) && std::exchange(selection, true)) continue;
    if (IsStation(control) && std::exchange(station, true)) continue;
    diagnostics_->Trap(kHandlers.at(i), [&] { HandOn(control, *values.at(i)); });
  }
}

void DDEClient::HandOn(LinkControl control, const std::string& text) {
  if (control == LinkControl::kFreq) {
    Freq_Change(text);
  } else if (IsSelection(control)) {
    window_->FollowSelection({Text(LinkControl::kDXLatitude), Text(LinkControl::kDXLongitude),
                              Text(LinkControl::kDXPrefix)});
  } else if (IsStation(control)) {
    window_->FollowStation(
        {Text(LinkControl::kLocalLatitude), Text(LinkControl::kLocalLongitude), {}});
  } else {
    window_->Follow(control, text);
  }
}

void DDEClient::Freq_Change(const std::string& text) {
  frequency_ = Kilohertz(text);
  if (!frequency_) {
    window_->Forget(LinkControl::kFreq);
    // Report once, not for every step of the dial.
    if (Trim(text).empty() || std::exchange(unreadable_frequency_, true)) return;
    throw Error(errors::kTypeMismatch, "the transceiver's frequency \"" +
                                           text.substr(0, kLongestShown) +
                                           "\" cannot be read as a number of kHz");
  }
  const PeerWindow::FollowedBand band =
      window_->FollowFrequency(*frequency_ / kKilohertzPerMegahertz);
  diagnostics_->DebugLog("   PredBand = " + band.name);
  diagnostics_->DebugLog(std::string("DDEClient.Freq_Change, thestate = ") +
                         BooleanText(band.followed));
}

void DDEClient::Forget(LinkControl control) {
  waiting_.at(Index(control)).reset();
  texts_.at(Index(control)).clear();
  if (control == LinkControl::kFreq) {
    frequency_.reset();
    unreadable_frequency_ = false;
  }
  window_->Forget(control);
}

const std::string& DDEClient::Text(LinkControl control) const {
  return texts_.at(Index(control));
}

}  // namespace skyhop
