#include "engine/results_table.h"

namespace skyhop {

// Out of line: some tools give up on the nested arrays of texts when every user initialises them.
ResultsTable::ResultsTable() {
  reached.fill(true);
}

}  // namespace skyhop
