#include "engine/results_table.h"

namespace skyhop {

// Defined here because some tools fail if every user of the header initialises the nested arrays of
// texts.
ResultsTable::ResultsTable() {
  reached.fill(true);
}

}  // namespace skyhop
