#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "interop/dde_client_module.h"
#include "interop/dde_server.h"
#include "interop/dde_server_module.h"
#include "ui/beacon/beacon_links.h"
#include "ui/configuration/ioncap_config.h"
#include "ui/prediction/ion_cap.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// A timer of the links as one of the view's timers.
class ViewLinkTimer : public LinkTimer {
 public:
  ViewLinkTimer(PredictionView& view, WindowTimer timer) : view_(&view), timer_(timer) {}
  void Start(std::chrono::milliseconds interval) override { view_->StartTimer(timer_, interval); }
  void Stop() override { view_->StopTimer(timer_); }

 private:
  PredictionView* view_;
  WindowTimer timer_;
};

/// The links with the other programs of the suite. The window's controller is made with `Server`
/// and `Peers`, which do nothing before Attach names the controller.
class ProgramLinks {
 public:
  ProgramLinks(LinkTransport& transport, PredictionView& view, Diagnostics& diagnostics)
      : transport_(&transport),
        timer_(view, WindowTimer::kServerRetryTimer),
        values_timer_(view, WindowTimer::kPeerValuesTimer),
        records_(diagnostics),
        diagnostics_(&diagnostics) {}

  /// The controller and the windows must outlive the last event from the links.
  void Attach(IonCap& controller, SNRService& point_prediction, DDECommon::OpenWindows& windows,
              DDECommon::Window& main_window);

  [[nodiscard]] CommandServer& Server() { return server_; }
  [[nodiscard]] PeerLinks& Peers() { return peers_; }
  [[nodiscard]] PeerOverview& Overview() { return overview_; }
  [[nodiscard]] BeaconModule::BeaconPeers& BeaconFollowers() { return beacon_links_; }
  /// The connected peers, for the head of the error log.
  [[nodiscard]] std::string InteropCaption() const;

 private:
  /// The parts that need the controller. Attach creates them.
  struct Parts {
    Parts(ProgramLinks& links, IonCap& controller, SNRService& point_prediction,
          DDECommon::OpenWindows& windows, DDECommon::Window& main_window);

    DDEServer server;
    DDEServerModule::Announcer announcer;
    DDEClient client;
    DDEClientModule::Links links;
  };

  class ServerPart : public CommandServer {
   public:
    explicit ServerPart(ProgramLinks& links) : links_(&links) {}
    void Initialize() override;
    void AcknowledgeLauncher() override;
    void Terminate() override;

   private:
    ProgramLinks* links_;
  };

  class PeersPart : public PeerLinks {
   public:
    explicit PeersPart(ProgramLinks& links) : links_(&links) {}
    void Initialize() override;
    void Terminate() override;
    [[nodiscard]] std::optional<double> TransceiverFrequency() override;
    [[nodiscard]] bool HasSolarHistory() override;
    void DisplaySolarHistory() override;
    void ServerRetryTimer_Tick() override;
    void PeerValuesTimer_Tick() override;

   private:
    ProgramLinks* links_;
  };

  class OverviewPart : public PeerOverview {
   public:
    explicit OverviewPart(ProgramLinks& links) : links_(&links) {}
    [[nodiscard]] std::vector<PeerState> Peers() const override;
    void Connect(std::size_t row) override;

   private:
    ProgramLinks* links_;
  };

  LinkTransport* transport_;
  ViewLinkTimer timer_;
  ViewLinkTimer values_timer_;
  DDECommon::Records records_;
  Diagnostics* diagnostics_;
  ServerPart server_{*this};
  PeersPart peers_{*this};
  OverviewPart overview_{*this};
  std::unique_ptr<Parts> parts_;
  BeaconLinks beacon_links_{[this] { return parts_ ? &parts_->links : nullptr; }};
};

}  // namespace skyhop
