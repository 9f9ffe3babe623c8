#include "app/skyhop/program_links.h"

#include "interop/suite.h"

namespace skyhop {

ProgramLinks::Parts::Parts(ProgramLinks& program, IonCap& controller, SNRService& point_prediction,
                           DDECommon::OpenWindows& windows, DDECommon::Window& main_window)
    : server({controller.Commands(), point_prediction, windows, main_window, program.records_,
              *program.diagnostics_}),
      announcer(*program.transport_, server, *program.diagnostics_),
      client(controller.Peers(), program.values_timer_, *program.diagnostics_),
      links({*program.transport_, client, controller.Peers(), program.timer_, program.records_,
             *program.diagnostics_}) {}

void ProgramLinks::Attach(IonCap& controller, SNRService& point_prediction,
                          DDECommon::OpenWindows& windows, DDECommon::Window& main_window) {
  parts_ = std::make_unique<Parts>(*this, controller, point_prediction, windows, main_window);
}

std::string ProgramLinks::InteropCaption() const {
  return parts_ ? parts_->links.InteropCaption() : std::string();
}

void ProgramLinks::ServerPart::Initialize() {
  if (links_->parts_) links_->parts_->announcer.Initialize();
}

void ProgramLinks::ServerPart::AcknowledgeLauncher() {
  if (links_->parts_) links_->parts_->announcer.AcknowledgeLauncher();
}

void ProgramLinks::ServerPart::Terminate() {
  if (links_->parts_) links_->parts_->announcer.Terminate();
}

void ProgramLinks::PeersPart::Initialize() {
  if (links_->parts_) links_->parts_->links.Initialize();
}

void ProgramLinks::PeersPart::Terminate() {
  if (links_->parts_) links_->parts_->links.Terminate();
}

std::optional<double> ProgramLinks::PeersPart::TransceiverFrequency() {
  return links_->parts_ ? links_->parts_->client.Frequency() : std::nullopt;
}

bool ProgramLinks::PeersPart::HasSolarHistory() {
  return links_->parts_ && links_->parts_->links.ServerConnected(role::kSpots);
}

void ProgramLinks::PeersPart::DisplaySolarHistory() {
  if (links_->parts_) links_->parts_->links.DisplaySolarHistory();
}

void ProgramLinks::PeersPart::ServerRetryTimer_Tick() {
  if (links_->parts_) links_->parts_->links.ServerRetryTimer_Tick();
}

void ProgramLinks::PeersPart::PeerValuesTimer_Tick() {
  if (links_->parts_) links_->parts_->client.PeerValuesTimer_Tick();
}

std::vector<PeerState> ProgramLinks::OverviewPart::Peers() const {
  if (!links_->parts_) return PeerOverview::Peers();
  std::vector<PeerState> peers;
  const bool usable = links_->transport_->Problem().empty();
  for (const DDEClientModule::PeerStatus& peer : links_->parts_->links.Peers()) {
    peers.push_back({peer.name, peer.purpose, peer.connected, usable && !peer.connected});
  }
  return peers;
}

void ProgramLinks::OverviewPart::Connect(std::size_t row) {
  if (!links_->parts_) return;
  const std::vector<DDEClientModule::PeerStatus> peers = links_->parts_->links.Peers();
  if (row < peers.size()) links_->parts_->links.ConnectToServer(peers[row].role);
}

}  // namespace skyhop
