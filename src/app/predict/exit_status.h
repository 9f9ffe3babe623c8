#pragma once

namespace skyhop::exit_status {

inline constexpr int kSuccess = 0;
/// The output, or the program folder, could not be written.
inline constexpr int kOutputFailed = 1;
inline constexpr int kInvalid = 2;
inline constexpr int kEngineFailed = 3;
inline constexpr int kTimeOut = 4;

}  // namespace skyhop::exit_status
