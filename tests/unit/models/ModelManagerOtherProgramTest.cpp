#include "ManagerFixture.h"

#include <base/LockedFile.h>
#include <models/StagedModel.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QThread>
#include <QTimerEvent>

#include <unistd.h>

namespace tulvane {
namespace {

/// The timer of this thread that ticked last.
class LastTick final : public QObject {
public:
    LastTick() { QCoreApplication::instance()->installEventFilter(this); }
    [[nodiscard]] QTimer* timer() const { return m_timer; }

private:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Timer && qobject_cast<QTimer*>(object) != nullptr)
            m_timer = static_cast<QTimer*>(object);
        return QObject::eventFilter(object, event);
    }

    QPointer<QTimer> m_timer;
};

/// Runs the event loop without a timer of the test's own.
template <class Predicate>
[[nodiscard]] bool waitWithoutTimers(Predicate&& predicate)
{
    const QDeadlineTimer limit(test::defaultTimeout);
    while (!predicate() && !limit.hasExpired()) {
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
    return predicate();
}

class ModelManagerOtherProgram : public test::ManagerFixture {
protected:
    /// Another program has a file that it checks.
    void SetUp() override
    {
        auto theirs = StagedModel::adopt(m_options.folders, m_model.id,
                                         m_scratch.write(QStringLiteral("arrived"), test::tinyBody()));
        ASSERT_TRUE(theirs);
        theirs->reset();
        const QString lock = m_options.folders.models + QStringLiteral("/.tiny.lock");
        m_lock = openLocked(QFile::encodeName(lock), WhenLocked::giveUp).value();
    }
    /// It is killed, and tidies up nothing.
    void die() const { ::close(m_lock); }

private:
    int m_lock = -1;
};

TEST_F(ModelManagerOtherProgram, ItsDeathIsAskedForOnceASecondUntilItComes)
{
    QElapsedTimer time;
    time.start();
    const LastTick tick;
    EXPECT_EQ(state(), State::verifying());
    ASSERT_TRUE(waitWithoutTimers([&] { return tick.timer() != nullptr; }));
    EXPECT_GE(time.elapsed(), 900);
    EXPECT_EQ(state(), State::verifying());
    die();
    ASSERT_TRUE(waitWithoutTimers([&] { return state() == State::ready(); }));
    EXPECT_FALSE(tick.timer()->isActive()) << "there is nothing left to ask for";
}

} // namespace
} // namespace tulvane
