#include "spaceweather/background_fetcher.h"

namespace skyhop {

BackgroundFetcher::~BackgroundFetcher() {
  if (Working()) (void)result_.wait_for(kLongestEnd);
  if (Working()) {
    thread_.detach();
  } else if (thread_.joinable()) {
    thread_.join();
  }
}

std::int32_t BackgroundFetcher::RemoveFromCache(const std::string& url) noexcept {
  return fetcher_->RemoveFromCache(url);
}

std::int32_t BackgroundFetcher::Fetch(const std::string& url, const std::filesystem::path& file,
                                      const std::stop_token& stop) noexcept {
  Await(stop);
  if (Working()) return fetch_codes::kAborted;
  try {
    if (thread_.joinable()) thread_.join();
    std::packaged_task<std::int32_t()> task(
        [fetcher = fetcher_, url, file, stop] { return fetcher->Fetch(url, file, stop); });
    result_ = task.get_future();
    thread_ = std::thread(std::move(task));
  } catch (...) {
    // If the system cannot start a thread, fetch on this one.
    result_ = {};
    return fetcher_->Fetch(url, file, stop);
  }
  Await(stop);
  if (Working()) return fetch_codes::kAborted;
  thread_.join();
  return result_.get();
}

/// Pauses until the other thread has ended or the fetch is stopped.
void BackgroundFetcher::Await(const std::stop_token& stop) {
  try {
    while (Working() && !stop.stop_requested()) pause_->Wait(kPause);
  } catch (...) {
    // A failed pause only stops the repainting. Still wait for the result.
    if (result_.valid()) result_.wait();
  }
}

bool BackgroundFetcher::Working() const {
  return result_.valid() && result_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
}

}  // namespace skyhop
