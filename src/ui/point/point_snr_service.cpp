#include "ui/point/point_snr_service.h"

#include <cmath>
#include <tuple>

#include "common/dates.h"
#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "geo/dx_grid.h"
#include "ui/point/snr_display.h"
#include "ui/shared/mode_names.h"
#include "ui/shared/raised.h"
#include "ui/shared/view_form.h"

namespace skyhop {
namespace {

using IONCAPModule::PathReception;
using IONCAPModule::PointReception;

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

constexpr const char* kReplaced = "replaced by another request";
constexpr const char* kProgramEnds = "the program ends";

}  // namespace

bool PointSnrService::Basis::SameAs(const Basis& other) const {
  // Required SNR, reliability, K index and the day of the month make no difference.
  const auto compared = [](const PredictionInputs& of) {
    return std::tuple(of.to_dx, of.transmitter, of.receiver, of.power, of.takeoff, of.noise,
                      of.Year(), of.Month(), of.sunspot_number, of.transmitter_antenna,
                      of.receiver_antenna);
  };
  return hour == other.hour && compared(inputs) == compared(other.inputs);
}

void PointSnrService::Predict(double frequency, const std::string& mode, const std::string& snr) {
  followed_.reset();
  Begin({{frequency, mode, snr}, false, std::nullopt});
}

/// While the user turns the dial there is nothing to predict yet, and nothing new when the
/// transceiver tells once more where it is.
void PointSnrService::Follow(double frequency, const std::string& mode) {
  if (!active_) return;
  const Wanted wanted{frequency, mode, ""};
  const bool outdated = old_ && last_ && last_->followed && !followed_;
  if (dial_ == wanted && !outdated) return;
  dial_ = wanted;
  followed_ = wanted;
  quiet_ticks_ = 0;
  StartTimer();
}

/// A timer that is started again and again never ticks.
void PointSnrService::StartTimer() {
  if (with_.view.TimerRunning(WindowTimer::kSNRExecuteTimer)) return;
  with_.view.StartTimer(WindowTimer::kSNRExecuteTimer, kInterval);
}

bool PointSnrService::InputsChanged() {
  return with_.diagnostics.Trap("PointSnrService.InputsChanged", false, [&] {
    if (!last_) return false;
    const std::optional<Basis> now = BasisNow();
    const bool same = now && basis_ ? now->SameAs(*basis_) : !now && !basis_;
    if (old_ == same) {
      old_ = !same;
      DisplaySNR();
    }
    return old_ && active_ && last_->followed;
  });
}

void PointSnrService::PredictSNR(const SNRRequest& request) {
  with_.diagnostics.Trap("IONCAPModule.PredictSNR", [&] {
    const std::optional<double> given = WholeNumberText(request.first);
    Begin({{given ? Megahertz(*given) : 0, request.mode, request.snr}, false, request});
  });
}

std::string PointSnrService::ValidatedSNR(const std::string& snr) {
  return IONCAPModule::Parameters::ValidatedSNR(snr);
}

void PointSnrService::Begin(const Order& order) {
  if (ended_) return;
  if (starting_) {
    RefuseNext(kReplaced);
    next_ = order;
    return;
  }
  Start(order);
  while (next_) Start(*std::exchange(next_, std::nullopt));
}

void PointSnrService::Start(const Order& order) {
  if (requester_) Answer(kReplaced);
  // A peer takes the place of what the dial asked for only until it has its answer.
  const bool dial_interrupted = last_ && last_->followed && with_.point.Running();
  if (order.requester && dial_interrupted && !followed_) followed_ = last_->wanted;
  requester_ = order.requester;
  last_ = order;
  basis_ = BasisNow();
  circuit_ = CircuitNow();
  old_ = false;
  {
    const Raised starting(starting_);
    problem_ = with_.point.PredictSNR(RequestFor(order.wanted), with_.clock.SteadyNow());
  }
  if (ended_) return with_.point.Cancel();
  if (!problem_.empty() && requester_) Answer(problem_);
  if (with_.point.Running() || !answers_.empty()) StartTimer();
  DisplaySNR();
}

/// The inputs of now for the prediction that was wanted last; nothing while they cannot be read.
std::optional<PointSnrService::Basis> PointSnrService::BasisNow() {
  const UtcTime now = with_.clock.UtcNow();
  ParameterSet circuit = RequestFor(last_->wanted).circuit;
  circuit.date = DateText(UtcDate(now));
  if (LatLonModule::IsUndefined(circuit.transmitter) ||
      LatLonModule::IsUndefined(circuit.receiver)) {
    return std::nullopt;
  }
  try {
    return Basis{IONCAPModule::InputsOf(circuit), UtcHourMinute(now).hour};
  } catch (const Error&) {
    return std::nullopt;
  }
}

/// Where the prediction that begins goes: the DX station's square, as far as the window shows it.
std::string PointSnrService::CircuitNow() const {
  if (!basis_) return {};
  const PredictionInputs& inputs = basis_->inputs;
  std::string square = DXGridModule::GetGridSquare(
      inputs.to_dx ? inputs.receiver : inputs.transmitter, with_.diagnostics);
  const std::string shown(Trim(with_.view.Text(TextField::kDXGrid)));
  if (!shown.empty() && EqualsIgnoringCase(square.substr(0, shown.size()), shown)) square = shown;
  return (inputs.to_dx ? "to " : "from ") + square;
}

IONCAPModule::PointRequest PointSnrService::RequestFor(const Wanted& wanted) {
  IONCAPModule::PointRequest request;
  request.frequency = wanted.frequency;
  request.mode = wanted.mode;
  request.circuit = IONCAPModule::ParametersOf(FormOf(with_.view, with_.configuration));
  request.circuit.prefix = with_.parameters.Set().prefix;
  request.circuit.snr = Trim(wanted.snr).empty() ? RequiredSnr(wanted.mode) : wanted.snr;
  if (!request.circuit.to_dx || !with_.configuration.FreqDependentEnabled()) return request;
  const std::int16_t band =
      with_.bands.GetbandIndex(with_.bands.GetBandNameForFreq(wanted.frequency));
  if (band < 0) return request;
  const BandSettings& settings = with_.configuration.Band(static_cast<std::size_t>(band));
  if (!Trim(settings.power).empty()) request.circuit.power = settings.power;
  if (!Trim(settings.takeoff).empty()) request.circuit.takeoff = settings.takeoff;
  return request;
}

/// What the mode needs; for a mode that is not in the list, what the window says.
std::string PointSnrService::RequiredSnr(const std::string& mode) const {
  const std::vector<ModeSettings>& modes = with_.configuration.Modes();
  if (const auto nearest = NearestMode(mode, modes)) return modes[*nearest].snr;
  return with_.view.Text(TextField::kSNR);
}

void PointSnrService::SNRExecuteTimer_Tick() {
  // What is being started has neither engines nor an answer yet.
  if (starting_) return;
  FollowWhenQuiet();
  if (with_.point.Running() && with_.point.Poll(with_.clock.SteadyNow())) DisplaySNR();
  AnswerWhenFinished();
  SendAnswers();
  if (!with_.point.Running() && !followed_) {
    with_.view.StopTimer(WindowTimer::kSNRExecuteTimer);
  }
}

void PointSnrService::FollowWhenQuiet() {
  static constexpr int kQuietTicks = 2;
  if (!followed_ || ++quiet_ticks_ < kQuietTicks) return;
  // A peer waits for its answer; the dial comes after that.
  if (requester_) return;
  Begin({*std::exchange(followed_, std::nullopt), true, std::nullopt});
}

void PointSnrService::AnswerWhenFinished() {
  if (requester_ && !with_.point.Running()) Answer(Problems(with_.point.Reception()));
}

/// Puts the answer to the present requester among those to be sent: a peer may be in the middle of
/// its request now, where no link can be opened.
void PointSnrService::Answer(const std::string& problem) {
  Answer(*std::exchange(requester_, std::nullopt), with_.point.Reception(), problem);
}

/// Tells the requester of what was to begin after the present start that it will not.
void PointSnrService::RefuseNext(const std::string& problem) {
  if (!next_) return;
  const Order order = *std::exchange(next_, std::nullopt);
  if (!order.requester) return;
  PointReception nothing;
  nothing.request.circuit.snr = order.requester->snr;
  nothing.hour = UtcHourMinute(with_.clock.UtcNow()).hour;
  Answer(*order.requester, nothing, problem);
}

void PointSnrService::Answer(const SNRRequest& request, const PointReception& reception,
                             const std::string& problem) {
  std::string record = records_.EncodeField("freq", request.first) +
                       records_.EncodeField("mode", request.mode) +
                       records_.EncodeField("reqsnr", reception.request.circuit.snr) +
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

void PointSnrService::SendAnswers() {
  for (const auto& [role, record] : std::exchange(answers_, {})) with_.answers.Send(role, record);
}

void PointSnrService::SetDisplayActive(bool active) {
  active_ = active;
  if (!active) {
    followed_.reset();
    dial_.reset();
  }
  DisplaySNR();
}

void PointSnrService::DisplaySNR() {
  with_.diagnostics.Trap("IONCAPModule.DisplaySNR", [&] {
    SnrDisplay display;
    if (last_ && problem_.empty()) {
      display = DisplayOf(with_.point.Reception(), circuit_);
      display.old = old_;
      if (old_) display.headline = "Previous prediction: " + display.headline;
    } else if (last_) {
      display.headline = "There is no prediction: " + problem_ + ".";
    }
    display.active = active_;
    with_.view.ShowSnr(display);
  });
}

/// Answers all peers that wait, while the links still exist.
void PointSnrService::Terminate() {
  ended_ = true;
  with_.point.Cancel();
  followed_.reset();
  if (requester_) Answer(kProgramEnds);
  RefuseNext(kProgramEnds);
  SendAnswers();
}

}  // namespace skyhop
