// A device with an item of each kind, and a session that reads and writes all of them.
#pragma once

#include <vector>

#include "tests/support/bytes.h"

namespace test {

/// For loadSnapshot.
extern const char* const kOneOfEach;

/// Requests of all five types.
std::vector<Bytes> everyRequest();

}  // namespace test
