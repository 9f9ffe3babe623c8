#include "ui/prediction/point_snr_service.h"

#include <cmath>

#include "common/numbers.h"
#include "common/text.h"
#include "ui/prediction/mode_names.h"
#include "ui/prediction/snr_display.h"

namespace skyhop {
namespace {

using IONCAPModule::PathReception;
using IONCAPModule::PointReception;
using Time = IONCAPModule::PointSnr::Time;

Time Now() {
  return std::chrono::steady_clock::now();
}

/// What went wrong on the paths, in one text.
std::string Problems(const PointReception& reception) {
  std::string text;
  for (const auto& [name, path] : {std::pair("short path: ", &reception.paths[0]),
                                   std::pair("long path: ", &reception.paths[1])}) {
    if (path->problem.empty()) continue;
    if (!text.empty()) text += "; ";
    text += name + path->problem;
  }
  return text;
}

}  // namespace

void PointSnrService::Predict(double frequency, const std::string& mode, const std::string& snr) {
  followed_.reset();
  Begin({frequency, mode, snr}, std::nullopt);
}

/// While the user turns the dial there is nothing to predict yet.
void PointSnrService::Follow(double frequency, const std::string& mode) {
  if (!active_) return;
  followed_ = Wanted{frequency, mode, ""};
  quiet_ticks_ = 0;
  with_.view.StartTimer(WindowTimer::kSNRExecuteTimer, kInterval);
}

void PointSnrService::PredictSNR(const SNRRequest& request) {
  with_.diagnostics.Trap("IONCAPModule.PredictSNR", [&] {
    const std::optional<double> given = WholeNumberText(request.first);
    Begin({given ? Megahertz(*given) : 0, request.mode, request.snr}, request);
  });
}

std::string PointSnrService::ValidatedSNR(const std::string& snr) {
  return IONCAPModule::Parameters::ValidatedSNR(snr);
}

void PointSnrService::Begin(const Wanted& wanted, const std::optional<SNRRequest>& requester) {
  if (requester_) Answer("replaced by another request");
  requester_ = requester;
  asked_ = true;
  problem_ = with_.point.PredictSNR(RequestFor(wanted), Now());
  if (!problem_.empty() && requester_) Answer(problem_);
  if (with_.point.Running() || !answers_.empty()) {
    with_.view.StartTimer(WindowTimer::kSNRExecuteTimer, kInterval);
  }
  DisplaySNR();
}

IONCAPModule::PointRequest PointSnrService::RequestFor(const Wanted& wanted) {
  IONCAPModule::PointRequest request;
  request.frequency = wanted.frequency;
  request.mode = wanted.mode;
  request.snr = Trim(wanted.snr).empty() ? RequiredSnr(wanted.mode) : wanted.snr;
  const bool to =
      with_.panel.Choice(PanelChoice::kPredictSignals) == direction_option::kToTheDXStation;
  if (!to || !with_.configuration.FreqDependentEnabled()) return request;
  const std::int16_t band =
      with_.bands.GetbandIndex(with_.bands.GetBandNameForFreq(wanted.frequency));
  if (band < 0) return request;
  const BandSettings& settings = with_.configuration.Band(static_cast<std::size_t>(band));
  request.power = settings.power;
  request.takeoff = settings.takeoff;
  return request;
}

/// What the mode needs; for a mode that is not in the list, what the window says.
std::string PointSnrService::RequiredSnr(const std::string& mode) const {
  const std::string name = ListedMode(mode);
  for (const ModeSettings& known : with_.configuration.Modes()) {
    if (EqualsIgnoringCase(known.mode, name)) return known.snr;
  }
  return with_.panel.Text(PanelText::kSNR);
}

void PointSnrService::SNRExecuteTimer_Tick() {
  FollowWhenQuiet();
  if (with_.point.Running() && with_.point.Poll(Now())) DisplaySNR();
  AnswerWhenFinished();
  for (const auto& [role, record] : std::exchange(answers_, {})) with_.answers.Send(role, record);
  if (!with_.point.Running() && !followed_) {
    with_.view.StopTimer(WindowTimer::kSNRExecuteTimer);
  }
}

void PointSnrService::FollowWhenQuiet() {
  static constexpr int kQuietTicks = 2;
  if (!followed_ || ++quiet_ticks_ < kQuietTicks) return;
  const Wanted wanted = *std::exchange(followed_, std::nullopt);
  // A peer waits for its answer; the dial can be followed at its next turn.
  if (!requester_) Begin(wanted, std::nullopt);
}

void PointSnrService::AnswerWhenFinished() {
  if (requester_ && !with_.point.Running()) Answer(Problems(with_.point.Reception()));
}

/// Puts the answer to the present requester among those to be sent: a peer may be in the middle of
/// its request now, where no link can be opened.
void PointSnrService::Answer(const std::string& problem) {
  const SNRRequest request = *std::exchange(requester_, std::nullopt);
  const PointReception& reception = with_.point.Reception();
  std::string record = records_.EncodeField("freq", request.first) +
                       records_.EncodeField("mode", request.mode) +
                       records_.EncodeField("reqsnr", reception.request.snr) +
                       records_.EncodeField("tag", request.fourth) +
                       records_.EncodeField("utc", PaddedNumber(reception.hour, 2));
  for (std::size_t index = 0; index < reception.paths.size(); ++index) {
    const PathReception& path = reception.paths.at(index);
    const std::string name = index == static_cast<std::size_t>(path_option::kShort) ? "sp" : "lp";
    const bool known = path.state == PathReception::State::kDone;
    const auto field = [&](const char* what, const std::string& value) {
      record += records_.EncodeField(name + what, known ? value : "");
    };
    field("snr", std::to_string(std::lround(path.snr)));
    field("rel", FixedText(100.0 * static_cast<double>(path.reliability), 0));
    field("mode", path.mode);
    field("dbm", std::to_string(IONCAPModule::DecibelMilliwatts(path.signal_power)));
  }
  record += records_.EncodeField("error", problem) +
            records_.EncodeField("engine", reception.engine) + "<eor>";
  answers_.emplace_back(request.sender, record);
}

void PointSnrService::SetDisplayActive(bool active) {
  active_ = active;
  if (!active) followed_.reset();
  DisplaySNR();
}

void PointSnrService::DisplaySNR() {
  with_.diagnostics.Trap("IONCAPModule.DisplaySNR", [&] {
    SnrDisplay display;
    if (asked_) display = DisplayOf(with_.point.Reception());
    if (!problem_.empty()) {
      display.rows = {};
      display.headline = "There is no prediction: " + problem_ + ".";
    }
    display.active = active_;
    with_.view.ShowSnr(display);
  });
}

void PointSnrService::Terminate() {
  with_.point.Cancel();
  requester_.reset();
  followed_.reset();
  answers_.clear();
}

}  // namespace skyhop
