#pragma once

#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <utility>

#include "common/pause.h"
#include "spaceweather/url_fetcher.h"

namespace skyhop {

/// Runs another fetcher on a separate thread while the caller waits in short pauses. A pause can
/// repaint the windows, so they do not look dead during a slow download. For the caller a fetch is
/// synchronous, and no other code of the program runs on the separate thread.
///
/// A fetch that is stopped returns at the next pause, even while its server or the system's name
/// service does not answer. The other thread ends by itself later; the next fetch waits for that.
class BackgroundFetcher : public UrlFetcher {
 public:
  static constexpr std::chrono::milliseconds kPause{20};
  /// How long the end of the program waits for a stopped fetch.
  static constexpr std::chrono::seconds kLongestEnd{2};

  /// `pause` must outlive this object and must block user input meanwhile.
  BackgroundFetcher(std::shared_ptr<UrlFetcher> fetcher, Pause& pause)
      : fetcher_(std::move(fetcher)), pause_(&pause) {}
  ~BackgroundFetcher() override;
  BackgroundFetcher(const BackgroundFetcher&) = delete;
  BackgroundFetcher& operator=(const BackgroundFetcher&) = delete;

  std::int32_t RemoveFromCache(const std::string& url) noexcept override;
  [[nodiscard]] std::int32_t Fetch(const std::string& url, const std::filesystem::path& file,
                                   const std::stop_token& stop) noexcept override;

 private:
  void Await(const std::stop_token& stop);
  [[nodiscard]] bool Working() const;

  /// Shared with the other thread, which may outlive this object.
  std::shared_ptr<UrlFetcher> fetcher_;
  Pause* pause_;
  std::future<std::int32_t> result_;  ///< of the other thread, valid until it was taken
  /// Joined as soon as its result is there. A thread that is detached while it ends can take the
  /// next one with it in the thread library of the Windows programs.
  std::thread thread_;
};

}  // namespace skyhop
