#pragma once

#include <base/Scheduler.h>
#include <support/FakeClock.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace tulvane::test {

/// A scheduler whose time moves only when the test moves it; due work runs in the order of its due times.
class FakeScheduler final : public Scheduler {
public:
    explicit FakeScheduler(FakeClock* clock = nullptr) : m_clock(clock) {}

    [[nodiscard]] std::unique_ptr<Token> after(std::chrono::milliseconds delay,
                                               std::function<void()> work) override
    {
        auto entry = std::make_shared<Entry>(Entry{m_now + delay, std::move(work)});
        m_entries.push_back(entry);
        return std::make_unique<HeldToken>(std::move(entry));
    }

    /// Moves time (and the clock, where one was given) forward and runs what has come due.
    void advance(std::chrono::milliseconds by)
    {
        const auto end = m_now + by;
        while (const auto next = takeDue(end)) {
            moveTo(next->due);
            next->work();
        }
        moveTo(end);
    }

    /// The delays, from now, of the calls that are still pending.
    [[nodiscard]] std::vector<std::chrono::milliseconds> pending() const
    {
        std::vector<std::chrono::milliseconds> delays;
        for (const auto& entry : m_entries) {
            if (const auto held = entry.lock())
                delays.push_back(held->due - m_now);
        }
        return delays;
    }

private:
    struct Entry {
        std::chrono::milliseconds due;
        std::function<void()> work;
    };
    class HeldToken final : public Token {
    public:
        explicit HeldToken(std::shared_ptr<Entry> entry) : m_entry(std::move(entry)) {}

    private:
        std::shared_ptr<Entry> m_entry;
    };

    std::shared_ptr<Entry> takeDue(std::chrono::milliseconds end)
    {
        std::erase_if(m_entries, [](const auto& entry) { return entry.expired(); });
        const auto first =
            std::ranges::min_element(m_entries, {}, [](const auto& entry) { return entry.lock()->due; });
        if (first == m_entries.end() || first->lock()->due > end)
            return nullptr;
        auto entry = first->lock();
        m_entries.erase(first);
        return entry;
    }

    void moveTo(std::chrono::milliseconds moment)
    {
        if (m_clock != nullptr)
            m_clock->advance(moment - m_now);
        m_now = moment;
    }

    FakeClock* m_clock = nullptr;
    std::chrono::milliseconds m_now{0};
    std::vector<std::weak_ptr<Entry>> m_entries;
};

} // namespace tulvane::test
