#pragma once

#include "common/errors.h"

namespace skyhop::testing {

/// The number of the Error that `body` throws, 0 if it throws none.
template <class Body>
int ErrorNumber(Body body) {
  try {
    body();
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace skyhop::testing
