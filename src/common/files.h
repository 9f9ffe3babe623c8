#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace skyhop {

/// A path as UTF-8 text, with the platform's separators: the form in which logs, messages, batch
/// and driver files show it.
[[nodiscard]] std::string PathText(const std::filesystem::path& path);

/// The path that a UTF-8 text names.
[[nodiscard]] std::filesystem::path PathFromText(const std::string& text);

/// Reads a whole file, at most `limit` bytes.
/// Throws Error 53 (no such file), 75 (a folder, or not readable), 70 (no right to read it),
/// 6 (longer than `limit`).
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path, std::size_t limit);

/// Writes a file as it is given, replacing an existing one. Throws the Errors of FileError.
void WriteFile(const std::filesystem::path& path, const std::string& content);

/// Has the system write a file to the disk. Throws the Errors of FileError.
using FileSync = void (*)(const std::filesystem::path& path);

/// Writes a file so that no program ever sees a part of it: into another file of the same folder,
/// which then takes its name. Replaces an existing regular file; a symbolic link keeps pointing at
/// its target, which is replaced. On failure nothing is left behind.
///
/// `permissions` are those of the new file, by default the system's for new files. With `sync`,
/// either the old or the new content is there as a whole after a power cut, too.
/// Throws the Errors of FileError, and Error 75 when the name belongs to something else than a
/// regular file.
void WriteFileAtOnce(const std::filesystem::path& path, const std::string& content,
                     std::filesystem::perms permissions = std::filesystem::perms::unknown,
                     FileSync sync = nullptr);

/// Creates a folder and its parents if they are missing. Throws the Errors of FileError.
void CreateFolder(const std::filesystem::path& path);

namespace Common {

/// The URL of a local file, for a browser: "file:///" and the name with every blank as "%20" and
/// every backslash as "/"; nothing else is changed. The third slash is that of a name that begins
/// with "/".
[[nodiscard]] std::string HTTPFilename(const std::string& name);

}  // namespace Common
}  // namespace skyhop
