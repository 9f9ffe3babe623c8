#include "platform/windows/url_moniker_fetcher.h"

#include <gtest/gtest.h>

#include "contract/url_fetcher_contract.h"

namespace skyhop::testing {
namespace {

using platform::UrlMonikerFetcher;

INSTANTIATE_TEST_SUITE_P(Backends, UrlFetcherContract,
                         ::testing::Values(FetcherBackend{
                             "moniker",
                             [] { return std::make_unique<HttpWorld<UrlMonikerFetcher>>(); }}),
                         ::testing::PrintToStringParamName());

TEST(UrlMonikerFetcher, RefusesUnusableAddresses) {
  // Some editions of the system do not treat an error page as a failure, so no test requests one.
  const TemporaryFolder folder;
  for (const char* url : {"nonsense:", ""}) {
    EXPECT_NE(UrlMonikerFetcher().Fetch(url, folder / "got.txt", {}), fetch_codes::kOk) << url;
  }
}

}  // namespace
}  // namespace skyhop::testing
