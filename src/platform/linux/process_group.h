#pragma once

#include <sys/types.h>

namespace skyhop::platform {

// A process group is a leading process with all the processes that it started.

/// Ends a group: asks its processes to end, then kills those that still run half a second later.
/// Returns when all have ended, or after another half second.
void EndGroup(pid_t group);

/// Makes the group end when the user interrupts this program. 0 cancels that.
void EndGroupWithThisProgram(pid_t group);

}  // namespace skyhop::platform
