#include "ModifierEventsBackend.h"

#include <platform/fake/FakeModifierEvents.h>
#include <ports/KeyModifiers.h>

#include <map>
#include <set>

namespace tulvane::test {

namespace {

class FakeBackend final : public ModifierEventsBackend {
public:
    ModifierEvents& events() override { return m_events; }
    void press(quint32 keyCode) override
    {
        m_held.insert(keyCode);
        send(keyCode);
    }
    void release(quint32 keyCode) override
    {
        m_held.erase(keyCode);
        send(keyCode);
    }

private:
    void send(quint32 keyCode)
    {
        static const std::map<quint32, quint64> flagOf{{54, eventFlags::command}, {55, eventFlags::command},
                                                       {56, eventFlags::shift},   {60, eventFlags::shift},
                                                       {58, eventFlags::option},  {61, eventFlags::option},
                                                       {59, eventFlags::control}, {62, eventFlags::control}};
        quint64 flags = 0;
        for (const quint32 key : m_held)
            flags |= flagOf.at(key);
        m_events.sendFlags(keyCode, flags);
    }

    FakeModifierEvents m_events;
    std::set<quint32> m_held;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, ModifierEventsContract,
                         testing::Values(ModifierBackendFactory{
                             "Fake", [] { return std::make_unique<FakeBackend>(); }}));

} // namespace tulvane::test
