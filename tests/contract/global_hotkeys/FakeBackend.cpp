#include "HotkeysBackend.h"

#include <platform/fake/FakeGlobalHotkeys.h>

namespace tulvane::test {

namespace {

class FakeBackend final : public HotkeysBackend {
public:
    GlobalHotkeys& hotkeys() override { return *m_hotkeys; }
    void press(const KeyCombination& combination) override { m_hotkeys->press(combination); }
    void release(const KeyCombination& combination) override { m_hotkeys->release(combination); }
    void releaseModifiersFirst(const KeyCombination& combination) override
    {
        m_hotkeys->release(combination);
    }
    void awaitRepeats(const KeyCombination& combination, const std::function<int()>& seen, int count) override
    {
        while (seen() < count)
            m_hotkeys->repeat(combination);
    }
    void takeElsewhere(const KeyCombination& combination) override { m_hotkeys->takeElsewhere(combination); }
    void freeElsewhere(const KeyCombination& combination) override { m_hotkeys->freeElsewhere(combination); }
    void changeKeyboard() override { m_hotkeys->changeKeyboard(); }
    void end() override { m_hotkeys.reset(); }

private:
    std::unique_ptr<FakeGlobalHotkeys> m_hotkeys = std::make_unique<FakeGlobalHotkeys>();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, GlobalHotkeysContract,
                         testing::Values(BackendFactory{"Fake",
                                                        [] { return std::make_unique<FakeBackend>(); }}));

} // namespace tulvane::test
