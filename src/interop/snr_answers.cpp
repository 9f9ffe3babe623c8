#include "interop/snr_answers.h"

#include <array>

#include "common/errors.h"
#include "interop/dde_common.h"
#include "interop/suite.h"

namespace skyhop {
namespace {

/// The applications by their roles.
constexpr std::array<const char*, 7> kApplications = {
    application::kTuneward, application::kArchivo, application::kQuester, application::kTessera,
    application::kGleaner,  application::kSkyhop,  application::kChirpa};

/// Ignores the events of an answer's link: the answer needs no reply.
class Indifferent : public LinkListener {
 public:
  void Changed(const std::string& /*item*/, const std::string& /*value*/) override {}
  void Closed() override {}
};

}  // namespace

void LinkedSNRAnswers::Send(std::int16_t role, const std::string& record) {
  diagnostics_->Trap("DDEServerModule.SendSNR", [&] {
    if (role < 0 || role >= static_cast<std::int16_t>(kApplications.size())) {
      diagnostics_->DebugLog("   no application has the role " + std::to_string(role));
      return;
    }
    const char* const name = kApplications.at(static_cast<std::size_t>(role));
    Indifferent listener;
    try {
      transport_->Connect(name, topic::kServer, listener)
          ->Execute(DDECommon::OwnCommand("snr", record));
      diagnostics_->DebugLog(std::string("   answered ") + name + ": " + record);
    } catch (const Error& error) {
      diagnostics_->DebugLog(std::string("   cannot answer ") + name + ": " + error.what());
    }
  });
}

}  // namespace skyhop
