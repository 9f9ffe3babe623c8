#pragma once

#include <sys/types.h>

namespace skyhop::platform {

// Process groups: a process that leads one, with everything that it started.

/// Ends a group: asks its processes first, then kills those that still run half a second later.
/// Returns when all have ended, or after another half second.
void EndGroup(pid_t group);

/// Sees to it that the group ends when the user interrupts this program. 0 takes that back.
void EndGroupWithThisProgram(pid_t group);

}  // namespace skyhop::platform
