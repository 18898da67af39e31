#include "RemoteControlBackend.h"

#include <platform/fake/FakeRemoteControl.h>

namespace tulvane::test {

namespace {

class FakeBackend final : public RemoteControlBackend {
public:
    std::unique_ptr<RemoteControl> process() override
    {
        return std::make_unique<FakeRemoteControl>(m_desktop);
    }
    std::unique_ptr<RemoteControl> lonelyProcess() override
    {
        const auto desktop = std::make_shared<FakeRemoteDesktop>();
        desktop->isReachable = false;
        return std::make_unique<FakeRemoteControl>(desktop);
    }

private:
    std::shared_ptr<FakeRemoteDesktop> m_desktop = std::make_shared<FakeRemoteDesktop>();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, RemoteControlContract,
                         testing::Values(RemoteBackendFactory{
                             "Fake", [] { return std::make_unique<FakeBackend>(); }}));

} // namespace tulvane::test
