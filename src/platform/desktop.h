#pragma once

/// What a window needs from the operating system beyond the toolkit. A library of its own, since
/// programs without windows do without it.
namespace skyhop::platform {

/// Tells screen readers that a caption names a field. Both are native handles of the toolkit's
/// windows.
void TieLabel(void* label, void* field);

}  // namespace skyhop::platform
