#pragma once

#include <insertion/TextInserter.h>
#include <platform/fake/FakeFocusedElement.h>
#include <platform/fake/FakeKeyPosting.h>
#include <platform/fake/FakePasteboard.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <support/Await.h>
#include <support/FakeScheduler.h>
#include <support/LogCapture.h>

#include <gtest/gtest.h>

namespace tulvane::test {

/// An inserter over fakes, with time standing still.
class TextInserterFixture : public testing::Test {
protected:
    TextInserterFixture() { m_board.otherProgramWrites(m_before); }

    /// Starts an insertion and lets it run as far as it gets without time passing.
    QCoro::Task<InsertionResult> start(const QString& text, InsertionMethod method = InsertionMethod::paste,
                                       bool restoreClipboard = true)
    {
        auto task = m_inserter->insert(text, method, restoreClipboard);
        settleEvents();
        return task;
    }

    void advance(std::chrono::milliseconds by)
    {
        m_scheduler.advance(by);
        settleEvents();
    }

    static void settleEvents()
    {
        for (int round = 0; round < 5; ++round)
            QCoreApplication::processEvents();
    }

    /// The result of a finished insertion.
    static std::optional<InsertionResult> result(const QCoro::Task<InsertionResult>& task)
    {
        std::optional<InsertionResult> answer;
        if (!task.isReady())
            return answer;
        // Awaiting a finished task answers at once.
        const auto take = [&]() -> QCoro::Task<> { answer = co_await task; };
        take();
        return answer;
    }

    [[nodiscard]] int spaces() const { return static_cast<int>(m_keys.spaces()); }
    [[nodiscard]] int pastes() const { return static_cast<int>(m_keys.pastes()); }

    const QString m_before = QStringLiteral("the user's own");
    FakePasteboards m_boards;
    FakePasteboard& m_board = m_boards.generalBoard;
    FakeKeyPosting m_keys;
    FakeFocusedElements m_elements;
    FakePrivacyPermissions m_permissions;
    FakeScheduler m_scheduler;
    LogCapture m_log;
    std::unique_ptr<TextInserter> m_inserter = std::make_unique<TextInserter>(
        InsertionPorts{m_boards, m_keys, m_elements, m_permissions, m_scheduler});
};

} // namespace tulvane::test
