#include "fake_link_world.h"

namespace skyhop::testing {
namespace {

INSTANTIATE_TEST_SUITE_P(Backends, LinkTransportContract,
                         ::testing::Values(LinkBackend{
                             "fake", [] { return std::make_unique<FakeLinkWorld>(); }}),
                         [](const auto& backend) { return std::string(backend.param.name); });

}  // namespace
}  // namespace skyhop::testing
