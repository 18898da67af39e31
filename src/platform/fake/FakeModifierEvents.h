#pragma once

#include <ports/ModifierEvents.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace tulvane {

/// Modifier events without a keyboard: the test sends them.
class FakeModifierEvents final : public ModifierEvents {
public:
    [[nodiscard]] Result<std::unique_ptr<Tap>, ModifierEventsError> createTap(qint64 keyCode,
                                                                              const Handler& handler) override
    {
        ++m_created;
        if (m_error)
            return failure(*m_error);
        auto state = std::make_shared<State>(State{keyCode, handler, false, 0});
        m_taps.push_back(state);
        return std::make_unique<FakeTap>(std::move(state));
    }

    [[nodiscard]] bool readsEveryKey() const override { return m_readsEveryKey; }
    void setReadsEveryKey(bool reads) { m_readsEveryKey = reads; }

    /// Every enabled tap receives the event; one that is notified of being disabled is, until it is enabled
    /// again.
    void send(const ModifierEvent& event)
    {
        for (const auto& tap : live()) {
            if (!tap->enabled)
                continue;
            tap->enabled = event.type == ModifierEvent::Type::flagsChanged;
            const Handler handler = tap->handler;
            handler(event);
        }
    }
    void sendFlags(qint64 keyCode, quint64 flags)
    {
        send({ModifierEvent::Type::flagsChanged, keyCode, flags});
    }

    /// From now on no tap can be created; without an error, they can again.
    void failTaps(const std::optional<ModifierEventsError>& error) { m_error = error; }

    /// How many taps were asked for, and the keys of those that exist now.
    [[nodiscard]] int created() const { return m_created; }
    [[nodiscard]] std::vector<qint64> keyCodes()
    {
        std::vector<qint64> codes;
        for (const auto& tap : live())
            codes.push_back(tap->keyCode);
        return codes;
    }
    /// Whether there is exactly one tap and it is enabled.
    [[nodiscard]] bool hasOneEnabledTap()
    {
        const auto taps = live();
        return taps.size() == 1 && taps.front()->enabled;
    }
    /// How often the taps that exist now were enabled.
    [[nodiscard]] int enables()
    {
        int enables = 0;
        for (const auto& tap : live())
            enables += tap->enables;
        return enables;
    }

private:
    struct State {
        qint64 keyCode;
        Handler handler;
        bool enabled;
        int enables;
    };
    class FakeTap final : public Tap {
    public:
        explicit FakeTap(std::shared_ptr<State> state) : m_state(std::move(state)) {}
        void enable() override
        {
            m_state->enabled = true;
            ++m_state->enables;
        }
        void disable() override { m_state->enabled = false; }

    private:
        std::shared_ptr<State> m_state;
    };

    [[nodiscard]] std::vector<std::shared_ptr<State>> live()
    {
        std::erase_if(m_taps, [](const auto& tap) { return tap.expired(); });
        std::vector<std::shared_ptr<State>> taps;
        for (const auto& tap : m_taps)
            taps.push_back(tap.lock());
        return taps;
    }

    std::vector<std::weak_ptr<State>> m_taps;
    std::optional<ModifierEventsError> m_error;
    int m_created = 0;
    bool m_readsEveryKey = false;
};

} // namespace tulvane
