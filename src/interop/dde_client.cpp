#include "interop/dde_client.h"

#include <string_view>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "interop/dde_common.h"

namespace skyhop {
namespace {

constexpr std::size_t kRoleDigits = 3;
constexpr double kKilohertzPerMegahertz = 1000;

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

std::size_t Index(LinkControl control) {
  return static_cast<std::size_t>(control);
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
  diagnostics_->Trap(kHandlers.at(Index(control)), [&] {
    texts_.at(Index(control)) = text;
    if (control == LinkControl::kFreq) {
      Freq_Change(text);
    } else {
      window_->Follow(control, text);
    }
  });
}

void DDEClient::Freq_Change(const std::string& text) {
  Forget(LinkControl::kFreq);
  texts_.at(Index(LinkControl::kFreq)) = text;
  if (Trim(text).empty()) return;
  const double kilohertz = ToDouble(text);
  frequency_ = kilohertz;
  const PeerWindow::FollowedBand band =
      window_->FollowFrequency(kilohertz / kKilohertzPerMegahertz);
  diagnostics_->DebugLog("   PredBand = " + band.name);
  diagnostics_->DebugLog(std::string("DDEClient.Freq_Change, thestate = ") +
                         BooleanText(band.followed));
}

void DDEClient::Forget(LinkControl control) {
  texts_.at(Index(control)).clear();
  if (control == LinkControl::kFreq) frequency_.reset();
  window_->Forget(control);
}

const std::string& DDEClient::Text(LinkControl control) const {
  return texts_.at(Index(control));
}

}  // namespace skyhop
