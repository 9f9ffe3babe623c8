#pragma once

#include <array>

#include "ui/drawing/surface.h"

namespace skyhop {

/// The colours of a filled area and of a text on it.
struct TextColors {
  Color fill{};
  Color ink{};

  friend constexpr bool operator==(const TextColors&, const TextColors&) = default;
};

/// Colours that are the same on a light and on a dark desktop.
namespace colors {

// The prediction chart.
inline constexpr Color kMuf10{255, 0, 0};
inline constexpr Color kMuf50{0, 255, 0};
/// The key of the curve is darker: a small square of pure green glares.
inline constexpr Color kMuf50Key{0, 192, 0};
inline constexpr Color kMuf90{0, 0, 255};
inline constexpr Color kLuf = kBlack;
inline constexpr Color kOpenBand{255, 0, 255};
inline constexpr Color kDay{255, 255, 0};
inline constexpr Color kTwilight{128, 128, 128};
inline constexpr Color kNight = kBlack;

/// Cells of the table from unreliable to reliable: steps of one hue whose lightness falls evenly,
/// so that people who cannot tell hues apart can tell the steps apart.
inline constexpr std::array<TextColors, 5> kReliability = {{{{244, 247, 251}, {96, 102, 114}},
                                                            {{198, 219, 239}, {16, 24, 40}},
                                                            {{133, 182, 219}, {16, 24, 40}},
                                                            {{55, 125, 184}, kWhite},
                                                            {{8, 64, 129}, kWhite}}};

// The day chart of the beacons.
/// Open levels 0 to 4.
inline constexpr std::array<Color, 5> kOpenLevels = {
    {{238, 240, 244}, {244, 214, 244}, {234, 168, 234}, {218, 112, 218}, {190, 60, 190}}};
inline constexpr Color kHeard{0, 110, 40};
inline constexpr Color kNotHeard{200, 40, 30};

// The forecast chart.
inline constexpr Color kFlux{200, 105, 0};
inline constexpr Color kQuiet{58, 150, 92};
inline constexpr Color kUnsettled{214, 160, 0};
inline constexpr Color kStorm{200, 56, 44};

}  // namespace colors

/// Colours that differ on a light and a dark desktop.
struct ChartPalette {
  Color background{};  ///< around the plot
  Color paper{};       ///< of the plot; light on both desktops, because the LUF is black
  Color ink{};         ///< headings
  Color text{};        ///< labels
  Color muted{};       ///< hints in place of a chart
  Color axis{};
  Color band{};        ///< band lines
  Color grid{};        ///< hour lines
  Color open_text{};   ///< labels of open bands
  Color time{};        ///< time index and band indicator
  Color time_text{};   ///< label of the time index
  Color old_paper{};   ///< of the plot of an earlier prediction
  Color old_text{};    ///< caption of an earlier prediction
  Color paper_text{};  ///< on the paper
  Color shade{};       ///< behind hours that do not reach the required reliability
  Color hatch{};       ///< the hatching on it
  Color refused{};     ///< behind a field whose text the program refuses
  TextColors failed;   ///< notice of a failure
  TextColors warning;  ///< notice of a warning
  TextColors running;  ///< notice of a run

  friend constexpr bool operator==(const ChartPalette&, const ChartPalette&) = default;
};

inline constexpr ChartPalette kLightPalette{
    .background = {250, 250, 251},
    .paper = {255, 255, 255},
    .ink = {32, 36, 44},
    .text = {62, 68, 80},
    .muted = {128, 134, 145},
    .axis = {110, 116, 128},
    .band = {204, 209, 217},
    .grid = {238, 240, 244},
    .open_text = {168, 0, 168},
    .time = {214, 122, 0},
    .time_text = {160, 86, 0},
    .old_paper = {255, 243, 214},
    .old_text = {130, 70, 0},
    .paper_text = {72, 78, 90},
    .shade = {235, 237, 240},
    .hatch = {182, 187, 196},
    .refused = {255, 214, 210},
    .failed = {{253, 222, 219}, {106, 20, 16}},
    .warning = {{255, 239, 200}, {96, 56, 0}},
    .running = {{221, 235, 252}, {16, 54, 104}},
};

inline constexpr ChartPalette kDarkPalette{
    .background = {45, 45, 48},
    .paper = {226, 228, 232},
    .ink = {240, 240, 242},
    .text = {206, 209, 214},
    .muted = {140, 145, 153},
    .axis = {150, 155, 163},
    .band = {182, 187, 196},
    .grid = {210, 213, 219},
    .open_text = {255, 150, 255},
    .time = {232, 132, 0},
    .time_text = {255, 178, 82},
    .old_paper = {236, 224, 196},
    .old_text = {110, 58, 0},
    .paper_text = {72, 78, 90},
    .shade = {200, 203, 209},
    .hatch = {150, 155, 164},
    .refused = {110, 34, 34},
    .failed = {{104, 36, 36}, {255, 226, 224}},
    .warning = {{92, 66, 14}, {255, 238, 205}},
    .running = {{32, 62, 98}, {220, 234, 252}},
};

}  // namespace skyhop
