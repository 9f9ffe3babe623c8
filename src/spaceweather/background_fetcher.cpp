#include "spaceweather/background_fetcher.h"

#include <future>

namespace skyhop {

std::int32_t BackgroundFetcher::RemoveFromCache(const std::string& url) noexcept {
  return fetcher_->RemoveFromCache(url);
}

std::int32_t BackgroundFetcher::Fetch(const std::string& url,
                                      const std::filesystem::path& file) noexcept {
  std::future<std::int32_t> result;
  try {
    result = std::async(std::launch::async, [&] { return fetcher_->Fetch(url, file); });
  } catch (...) {
    // A system without a thread to spare can still wait for the network.
    return fetcher_->Fetch(url, file);
  }
  try {
    while (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
      pause_->Wait(kPause);
    }
  } catch (...) {
    // A pause that fails costs the repainting only; the result is still to be waited for.
  }
  return result.get();
}

}  // namespace skyhop
