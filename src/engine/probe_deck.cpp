#include "engine/probe_deck.h"

#include "common/errors.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr const char* kIonCapDeck =
    "CIRCUIT   04050N    07425W    05150N    00012W    00000\n"
    "SYSTEM    00150  -3.   3.  10.  24.\n"
    "MONTH     0202600011\n"
    "SUNSPOT   10500\n"
    "TIME      00001000240000100000\n"
    "ANTENNA   0000100003      .001   4.       -.5  16.   0.                 12.0001\n"
    "ANTENNA   0000100004      .001   4.       -.5  16.   6.                 54.0002\n"
    "ANTENNA   0000200004      .001   4.       -.5  16.   0.                 54.0003\n"
    "METHOD    00026\n"
    "EXECUTE   00000\n"
    "QUIT      \n";

/// With the places of what differs between the engines.
constexpr const char* kItsDeck =
    "LINEMAX    9999       number of lines-per-page\n"
    "COEFFS    CCIR\n"
    "TIME          1   24    1    1\n"
    "MONTH      202611.00\n"
    "SUNSPOT   105.0<index>\n"
    "LABEL     NEW YORK            LONDON              \n"
    "CIRCUIT   40.50N    74.25W    51.50N     0.12W  S     0\n"
    "SYSTEM     1.00  -3. 3.00   10 24.0 3.00 0.10\n"
    "FPROB      1.00 1.00 1.00 0.00\n"
    "ANTENNA       1    1    2   30     0.000[default/isotrope     ]  0.0    1.5000\n"
    "ANTENNA       2    2    2   30     0.000[default/isotrope     ]  0.0    0.0000\n"
    "FREQUENCY  0.00 3.50 5.30 7.1010.1014.1018.1021.1024.9028.2050.10 0.00\n"
    "METHOD       <method>    0\n"
    "EXECUTE\n"
    "QUIT\n";

std::string ItsDeck(std::string_view index, std::string_view method) {
  return ReplaceAll(ReplaceAll(kItsDeck, "<index>", index), "<method>", method);
}

std::string Deck(EngineChoice engine) {
  switch (engine) {
    case EngineChoice::kIonCap:
      return kIonCapDeck;
    case EngineChoice::kIcePac:
      // The geomagnetic index Q of a disturbed day.
      return ItsDeck(" 5.50", "26");
    case EngineChoice::kVoaCap:
      return ItsDeck("", "26");
    case EngineChoice::kVoaCapSnr:
      return ItsDeck("", "30");
    case EngineChoice::kNone:
      break;
  }
  throw Error(errors::kInvalidCall, "no engine is selected");
}

}  // namespace

IONCAPModule::DeckParameters ProbeQuestion() {
  IONCAPModule::DeckParameters question;
  question.transmitter = {{40, 30, 0, -1}, {74, 15, 0, -1}};
  question.receiver = {{51, 30, 0, -1}, {0, 7, 0, -1}};
  question.power = 1500;
  question.takeoff = 3;
  question.availability = 10;
  question.snr = 24;
  question.noise = 2;
  question.year = 2026;
  question.month = 11;
  question.sunspot_number = 105;
  return question;
}

std::string ProbeDeck(EngineChoice engine) {
  return ReplaceAll(Deck(engine), "\n", "\r\n");
}

}  // namespace skyhop
