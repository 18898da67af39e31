#include "ModifierEventsBackend.h"

#include <ports/KeyModifiers.h>
#include <support/Await.h>

#include <vector>

namespace tulvane::test {

namespace {

using Tap = std::unique_ptr<ModifierEvents::Tap>;

struct Seen {
    qint64 keyCode;
    quint64 flags;

    [[nodiscard]] friend bool operator==(const Seen&, const Seen&) = default;
};

/// An enabled tap and what it has told.
class Listener {
public:
    explicit Listener(ModifierEvents& events)
    {
        auto tap = events.createTap(61, [this](const ModifierEvent& event) {
            EXPECT_EQ(event.type, ModifierEvent::Type::flagsChanged);
            m_seen.push_back({event.keyCode, event.flags});
        });
        EXPECT_TRUE(tap);
        m_tap = std::move(*tap);
    }
    [[nodiscard]] ModifierEvents::Tap& tap() { return *m_tap; }
    /// Waits until an event has come, and forgets it.
    [[nodiscard]] Seen next()
    {
        EXPECT_TRUE(waitUntil([this] { return !m_seen.empty(); }));
        if (m_seen.empty())
            return {};
        const Seen seen = m_seen.front();
        m_seen.erase(m_seen.begin());
        return seen;
    }
    [[nodiscard]] bool isEmpty() const { return m_seen.empty(); }

private:
    Tap m_tap;
    std::vector<Seen> m_seen;
};

} // namespace

TEST_P(ModifierEventsContract, TellsEachKeyWithItsCodeAndItsFlag)
{
    const auto backend = GetParam().make();
    Listener listener(backend->events());
    listener.tap().enable();
    for (const Seen& key :
         {Seen{54, eventFlags::command}, Seen{55, eventFlags::command}, Seen{56, eventFlags::shift},
          Seen{60, eventFlags::shift}, Seen{58, eventFlags::option}, Seen{61, eventFlags::option},
          Seen{59, eventFlags::control}, Seen{62, eventFlags::control}}) {
        backend->press(static_cast<quint32>(key.keyCode));
        EXPECT_EQ(listener.next(), key);
        backend->release(static_cast<quint32>(key.keyCode));
        EXPECT_EQ(listener.next(), (Seen{key.keyCode, 0}));
    }
    EXPECT_TRUE(listener.isEmpty());
}

TEST_P(ModifierEventsContract, LeftAndRightShareOneFlag)
{
    const auto backend = GetParam().make();
    Listener listener(backend->events());
    listener.tap().enable();
    backend->press(58);
    backend->press(61);
    backend->press(60);
    backend->release(61);
    backend->release(58);
    backend->release(60);
    EXPECT_EQ(listener.next(), (Seen{58, eventFlags::option}));
    EXPECT_EQ(listener.next(), (Seen{61, eventFlags::option}));
    EXPECT_EQ(listener.next(), (Seen{60, eventFlags::option | eventFlags::shift}));
    EXPECT_EQ(listener.next(), (Seen{61, eventFlags::option | eventFlags::shift}));
    EXPECT_EQ(listener.next(), (Seen{58, eventFlags::shift}));
    EXPECT_EQ(listener.next(), (Seen{60, 0}));
}

TEST_P(ModifierEventsContract, TellsNothingUnlessItIsEnabled)
{
    const auto backend = GetParam().make();
    Listener listener(backend->events());
    Listener other(backend->events());
    other.tap().enable();
    backend->press(61);
    backend->release(61);
    EXPECT_EQ(other.next().keyCode, 61);
    EXPECT_EQ(other.next().keyCode, 61);

    listener.tap().enable();
    listener.tap().enable();
    backend->press(60);
    EXPECT_EQ(listener.next(), (Seen{60, eventFlags::shift})) << "and not the key from before";
    backend->release(60);
    EXPECT_EQ(listener.next(), (Seen{60, 0}));

    listener.tap().disable();
    listener.tap().disable();
    backend->press(62);
    backend->release(62);
    listener.tap().enable();
    backend->press(54);
    EXPECT_EQ(listener.next(), (Seen{54, eventFlags::command}));
    backend->release(54);
}

TEST_P(ModifierEventsContract, ATapMayBeDroppedByItsOwnHandler)
{
    const auto backend = GetParam().make();
    Tap tap;
    int told = 0;
    auto created = backend->events().createTap(61, [&](const ModifierEvent&) {
        ++told;
        tap.reset();
    });
    ASSERT_TRUE(created);
    tap = std::move(*created);
    tap->enable();
    Listener other(backend->events());
    other.tap().enable();
    backend->press(61);
    EXPECT_TRUE(waitUntil([&] { return told == 1; }));
    backend->release(61);
    EXPECT_EQ(other.next(), (Seen{61, eventFlags::option}));
    EXPECT_EQ(other.next(), (Seen{61, 0}));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(tap, nullptr);
}

} // namespace tulvane::test
