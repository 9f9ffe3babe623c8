#pragma once

#include "common/diagnostics.h"
#include "interop/command_target.h"
#include "interop/link_transport.h"

namespace skyhop {

/// Sends answers over the links: executes the command "snr" with the record on the requester's
/// command topic. If the requester no longer runs, logs that and drops the answer.
class LinkedSNRAnswers : public SNRAnswers {
 public:
  /// Both must outlive this object.
  LinkedSNRAnswers(LinkTransport& transport, Diagnostics& diagnostics)
      : transport_(&transport), diagnostics_(&diagnostics) {}

  void Send(std::int16_t role, const std::string& record) override;

 private:
  LinkTransport* transport_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop
