#include "HotKeysBackend.h"

#include <platform/fake/FakeGlobalHotKeys.h>

namespace tulvane::test {

namespace {

class FakeBackend final : public HotKeysBackend {
public:
    GlobalHotKeys& hotKeys() override { return *m_hotKeys; }
    void press(const KeyCombination& combination) override { m_hotKeys->press(combination); }
    void release(const KeyCombination& combination) override { m_hotKeys->release(combination); }
    void releaseModifiersFirst(const KeyCombination& combination) override
    {
        m_hotKeys->release(combination);
    }
    void awaitRepeats(const KeyCombination& combination, const std::function<int()>& seen, int count) override
    {
        while (seen() < count)
            m_hotKeys->repeat(combination);
    }
    void takeElsewhere(const KeyCombination& combination) override { m_hotKeys->takeElsewhere(combination); }
    void freeElsewhere(const KeyCombination& combination) override { m_hotKeys->freeElsewhere(combination); }
    void changeKeyboard() override { m_hotKeys->changeKeyboard(); }
    void end() override { m_hotKeys.reset(); }

private:
    std::unique_ptr<FakeGlobalHotKeys> m_hotKeys = std::make_unique<FakeGlobalHotKeys>();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, GlobalHotKeysContract,
                         testing::Values(BackendFactory{"Fake",
                                                        [] { return std::make_unique<FakeBackend>(); }}));

} // namespace tulvane::test
