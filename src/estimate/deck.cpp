#include "estimate/deck.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "common/errors.h"
#include "common/text.h"
#include "estimate/card.h"
#include "estimate/deck_cards.h"

namespace skyhop::estimate {
namespace {

/// The state of reading a deck card by card.
class DeckReader {
 public:
  /// Takes the next line. Returns whether there may be more.
  bool Take(int number, std::string_view line) {
    const Card card(number, line);
    if (card.IsBlank()) return true;
    deck_.lines.emplace_back(line);
    if (card.Name() == "QUIT") {
      if (!executed_) card.Refuse("which comes before any EXECUTE card");
      return false;
    }
    if (executed_) card.Refuse("which comes after EXECUTE: a deck is for one run");
    if (card.Name() == "EXECUTE") {
      Execute(card);
    } else {
      Read(card);
    }
    return true;
  }

  /// The deck, when it is complete.
  Deck Finish() && {
    if (deck_.lines.empty()) throw Error(errors::kTypeMismatch, "the deck is empty");
    if (!executed_) throw Error(errors::kTypeMismatch, "the deck has no EXECUTE card");
    return std::move(deck_);
  }

 private:
  void Read(const Card& card) {
    const auto kind = std::find_if(kinds_.begin(), kinds_.end(),
                                   [&](const CardKind& k) { return k.name == card.Name(); });
    if (kind == kinds_.end()) card.Refuse("which this engine does not know");
    const auto index = static_cast<std::size_t>(kind - kinds_.begin());
    if (seen_[index] && !kind->repeats) card.Refuse("which comes a second time");
    seen_[index] = true;
    kind->read(card, deck_);
  }

  void Execute(const Card& card) {
    (void)card.Integer({11, 15}, "number of runs");
    card.ExpectEndAt(16);
    for (std::size_t i = 0; i < kinds_.size(); ++i) {
      if (!kinds_[i].required || seen_[i]) continue;
      card.Refuse("before which there is no " + std::string(kinds_[i].name) + " card");
    }
    if (deck_.method != Method::kMuf && deck_.frequencies.empty()) {
      card.Refuse("before which there is no FREQUENCY card");
    }
    executed_ = true;
  }

  Deck deck_;
  std::span<const CardKind> kinds_ = CardKinds();
  std::vector<bool> seen_ = std::vector<bool>(kinds_.size());
  bool executed_ = false;
};

}  // namespace

Deck ReadDeck(std::string_view text) {
  DeckReader reader;
  for (int number = 1; !text.empty(); ++number) {
    if (!reader.Take(number, TakeLine(text))) break;
  }
  return std::move(reader).Finish();
}

}  // namespace skyhop::estimate
