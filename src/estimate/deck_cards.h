#pragma once

#include <span>
#include <string_view>

#include "estimate/card.h"
#include "estimate/deck.h"

namespace skyhop::estimate {

/// A card that decks have, between the first and EXECUTE.
struct CardKind {
  std::string_view name;
  /// Takes the card into the deck. Throws as Card does.
  void (*read)(const Card& card, Deck& deck);
  bool required;
  bool repeats;
};

[[nodiscard]] std::span<const CardKind> CardKinds();

}  // namespace skyhop::estimate
