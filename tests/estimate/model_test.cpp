#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "estimate/circuit.h"
#include "estimate/ground.h"
#include "estimate/propagation_math.h"
#include "support/temporary_folder.h"

namespace skyhop::estimate {
namespace {

// The expected figures are rounded to three decimals.
constexpr double kTolerance = 0.00051;

/// One line of the table of expected figures.
class Row {
 public:
  explicit Row(const std::string& line) : stream_(line) { stream_ >> kind_; }

  [[nodiscard]] const std::string& Kind() const { return kind_; }

  std::string Word() {
    std::string word;
    if (!(stream_ >> word)) ADD_FAILURE() << kind_ << " is too short";
    return word;
  }

  double Number() { return std::stod(Word()); }

  void Expect(const char* what, double value) { EXPECT_NEAR(Number(), value, kTolerance) << what; }

  [[nodiscard]] bool AtEnd() { return (stream_ >> std::ws).eof(); }

 private:
  std::istringstream stream_;
  std::string kind_;
};

/// Follows the table row by row and compares every figure in it with the model's.
class Comparison {
 public:
  void Take(Row row) {
    if (row.Kind() == "circuit") TakeCircuit(row);
    if (row.Kind() == "path") row.Expect("length", circuit_->Route().Length());
    if (row.Kind() == "point") TakePoint(row);
    if (row.Kind() == "hour") TakeHour(row);
    if (row.Kind() == "state") TakeState(row);
    if (row.Kind() == "band") TakeBand(row);
    EXPECT_TRUE(row.AtEnd()) << "a " << row.Kind() << " was not compared to its end";
  }

  [[nodiscard]] int Bands() const { return bands_; }

 private:
  void TakeCircuit(Row& row) {
    CircuitParameters parameters;
    const double from_latitude = row.Number();
    parameters.transmitter = PositionFromDegrees(from_latitude, row.Number());
    const double to_latitude = row.Number();
    parameters.receiver = PositionFromDegrees(to_latitude, row.Number());
    parameters.long_way = row.Word() == "long";
    parameters.month = static_cast<int>(row.Number());
    parameters.sunspot_number = row.Number();
    parameters.power = row.Number();
    parameters.min_elevation = Radians(row.Number());
    parameters.man_made_noise = row.Number();
    parameters.required_snr = row.Number();
    parameters.required_reliability = row.Number() / 100.0;
    circuit_ = std::make_unique<Circuit>(parameters);
    point_ = 0;
  }

  void TakePoint(Row& row) {
    const GeoPosition& position = circuit_->PathOf().Points().at(point_++).position;
    row.Expect("latitude", Degrees(position.latitude));
    row.Expect("longitude", Degrees(position.longitude));
    EXPECT_EQ(row.Word(), IsLand(position) ? "land" : "sea");
  }

  void TakeHour(Row& row) {
    utc_hour_ = row.Number();
    const CircuitHour hour = circuit_->At(utc_hour_);
    const PathHour& state = hour.State();
    row.Expect("FOT", hour.Muf().fot);
    row.Expect("MUF", hour.Muf().muf);
    row.Expect("HPF", hour.Muf().hpf);
    const std::string luf = row.Word();
    const std::optional<double> computed_luf = hour.Luf();
    EXPECT_EQ(luf == "none", !computed_luf);
    if (luf != "none") {
      EXPECT_NEAR(std::stod(luf), computed_luf.value_or(0), kTolerance);
    }
    row.Expect("controlling area", static_cast<double>(state.ControllingIndex()));
    row.Expect("absorption index", state.Absorbing().MeanIndex());
    row.Expect("excess loss", state.Excess().median);
    row.Expect("lower decile", state.Excess().lower_decile);
    row.Expect("upper decile", state.Excess().upper_decile);
    row.Expect("E MUF", state.E().muf);
    row.Expect("F2 MUF", state.F2().muf);
    row.Expect("E hops", state.E().hops);
    row.Expect("F2 hops", state.F2().hops);
    state_ = 0;
  }

  void TakeState(Row& row) {
    const CircuitHour hour = circuit_->At(utc_hour_);
    const IonosphereState& state = hour.State().Points().at(state_);
    row.Expect("foE", state.foe);
    row.Expect("F2", state.f2);
    row.Expect("M(3000)", state.m3000);
    row.Expect("height ratio", state.height_ratio);
    row.Expect("gyrofrequency", circuit_->PathOf().Points().at(state_).field.gyrofrequency);
    row.Expect("local time", state.local_time);
    ++state_;
  }

  void TakeBand(Row& row) {
    const Reception reception = circuit_->At(utc_hour_).At(row.Number());
    row.Expect("SNR", reception.snr);
    row.Expect("reliability", reception.reliability);
    row.Expect("signal", reception.signal_power);
    row.Expect("noise", reception.noise_power);
    EXPECT_EQ(row.Word(), ModeText(reception.ray));
    row.Expect("take-off angle", Degrees(reception.ray.elevation));
    row.Expect("days below the MUF", reception.ray.days);
    ++bands_;
  }

  std::unique_ptr<Circuit> circuit_;
  double utc_hour_ = 0;
  std::size_t point_ = 0;
  std::size_t state_ = 0;
  int bands_ = 0;
};

TEST(EstimateModel, AgreesWithAnIndependentImplementation) {
  std::istringstream table(skyhop::testing::TestData("estimate/circuits.txt"));
  Comparison comparison;
  std::string line;
  for (int number = 1; std::getline(table, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    SCOPED_TRACE("line " + std::to_string(number) + ": " + line);
    comparison.Take(Row(line));
  }
  // 20 circuits, 3 hours, 10 bands
  EXPECT_EQ(comparison.Bands(), 600);
}

}  // namespace
}  // namespace skyhop::estimate
