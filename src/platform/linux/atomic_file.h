#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>

namespace skyhop::platform {

/// Replaces a file by new content so that at every moment, also after a crash or a power cut,
/// either the old or the new content is there as a whole. A symbolic link keeps pointing at its
/// target. Throws the Errors of FileError; the old file is untouched then.
void ReplaceFile(const std::filesystem::path& path, std::string_view content, mode_t mode);

}  // namespace skyhop::platform
