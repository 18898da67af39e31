#include "ScriptedDesktop.h"

#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using test::ScriptedDesktop;

class AtspiLifetimeTest : public testing::Test {
protected:
    std::shared_ptr<FocusedElement> found() { return test::await(m_elements->focused()); }

    ScriptedDesktop m_desktop;
    test::ScriptedProgram& m_program = m_desktop.addField(u"a|"_qs);
    std::unique_ptr<AtspiFocusedElements> m_elements =
        std::make_unique<AtspiFocusedElements>(m_desktop.sessionBus());
};

/// Sets a variable of the environment, or removes it; as it was when this goes.
class Variable {
public:
    Variable(const char* name, const QByteArray& value) : m_name(name), m_before(qgetenv(name))
    {
        put(value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { put(m_before); }

private:
    void put(const QByteArray& value) const
    {
        if (value.isEmpty())
            qunsetenv(m_name);
        else
            qputenv(m_name, value);
    }

    const char* m_name;
    QByteArray m_before;
};

} // namespace

TEST_F(AtspiLifetimeTest, EveryQuestionIsAnsweredWhenTheAdapterGoes)
{
    const auto element = found();
    ASSERT_NE(element, nullptr);
    m_program.frozen = true;
    const auto search = m_elements->focused();
    const auto settable = element->settable();
    const auto role = element->role();
    const auto written = element->setSelectedText(u"x"_qs);
    const auto value = element->value();
    m_elements = nullptr;
    // At once, without a turn of the event loop: there may be none any more.
    ASSERT_TRUE(search.isFinished() && settable.isFinished() && role.isFinished() && written.isFinished() &&
                value.isFinished());
    EXPECT_EQ(search.result(), nullptr);
    EXPECT_FALSE(settable.result());
    EXPECT_EQ(role.result(), std::nullopt);
    EXPECT_FALSE(written.result());
    EXPECT_EQ(value.result(), std::nullopt);
}

TEST_F(AtspiLifetimeTest, AnElementMayOutliveTheAdapter)
{
    const auto element = found();
    m_elements = nullptr;
    EXPECT_FALSE(test::await(element->settable()));
    EXPECT_FALSE(test::await(element->setSelectedText(u"x"_qs)));
    EXPECT_EQ(test::await(element->value()), std::nullopt);
}

TEST_F(AtspiLifetimeTest, AnElementMayGoBeforeItsAnswer)
{
    auto element = found();
    const auto value = element->value();
    const auto written = element->setSelectedText(u"x"_qs);
    element = nullptr;
    EXPECT_EQ(test::await(value), u"a"_qs);
    EXPECT_TRUE(test::await(written));
}

TEST_F(AtspiLifetimeTest, TheAdapterMayGoWhileItReachesForTheBus)
{
    const auto search = m_elements->focused();
    m_elements = nullptr;
    ASSERT_TRUE(search.isFinished());
    EXPECT_EQ(search.result(), nullptr);
}

TEST_F(AtspiLifetimeTest, TheAdapterMayGoAtAnyCallOfASearchOrAWriting)
{
    for (int last = 1; last < 40; ++last) {
        auto elements = std::make_unique<AtspiFocusedElements>(m_desktop.sessionBus());
        m_program.object(ScriptedDesktop::field).text = u"a"_qs;
        int calls = 0;
        m_program.onCall = [&](const QString&) {
            if (++calls == last)
                elements = nullptr;
        };
        const auto element = test::await(elements->focused());
        if (element)
            (void)test::await(element->setSelectedText(u"x"_qs));
        m_program.onCall = nullptr;
    }
}

TEST_F(AtspiLifetimeTest, SeveralQuestionsAtOnceAreAllAnswered)
{
    QList<QFuture<std::shared_ptr<FocusedElement>>> questions;
    for (int count = 0; count < 5; ++count)
        questions.append(m_elements->focused());
    for (auto& question : questions)
        EXPECT_NE(test::await(question), nullptr);
}

TEST_F(AtspiLifetimeTest, ADeadBusAnswersWithNothing)
{
    const auto element = found();
    m_program.frozen = true;
    const auto pending = element->value();
    const auto search = m_elements->focused();
    QElapsedTimer clock;
    clock.start();
    m_desktop.killBus();
    EXPECT_EQ(test::await(pending), std::nullopt);
    EXPECT_EQ(test::await(search), nullptr);
    EXPECT_FALSE(test::await(element->setSelectedText(u"x"_qs)));
    EXPECT_EQ(found(), nullptr);
    EXPECT_LT(clock.elapsed(), 3000);
}

TEST_F(AtspiLifetimeTest, ABusThatComesBackElsewhereIsFound)
{
    ScriptedDesktop other;
    other.addField(u"b|"_qs);
    ASSERT_NE(found(), nullptr);
    // The session stays, its accessibility bus is another one from now on.
    test::ScriptedProgram session(other.sessionBus(), QString());
    ScriptedDesktop first;
    first.addField(u"a|"_qs);
    other.registry().accessibilityAddress = first.sessionBus();
    AtspiFocusedElements elements(other.sessionBus());
    EXPECT_EQ(test::await(test::await(elements.focused())->value()), u"a"_qs);
    first.killBus();
    other.registry().accessibilityAddress = other.sessionBus();
    std::shared_ptr<FocusedElement> again;
    EXPECT_TRUE(test::waitUntil([&] {
        again = test::await(elements.focused());
        return again != nullptr;
    }));
    EXPECT_EQ(test::await(again->value()), u"b"_qs);
}

TEST_F(AtspiLifetimeTest, WithoutAnAccessibilityBusThereIsNoElement)
{
    m_desktop.registry().object(u"/org/a11y/bus"_qs).refusing = {u"GetAddress"_qs};
    EXPECT_EQ(found(), nullptr);
    m_desktop.registry().object(u"/org/a11y/bus"_qs).refusing.clear();
    m_desktop.registry().accessibilityAddress.clear();
    EXPECT_EQ(found(), nullptr);
    m_desktop.registry().accessibilityAddress = u"unix:path=/nowhere/at/all"_qs;
    EXPECT_EQ(found(), nullptr);
    m_desktop.registry().accessibilityAddress = u"no address"_qs;
    EXPECT_EQ(found(), nullptr);
}

TEST_F(AtspiLifetimeTest, AServiceThatDoesNotNameTheBusIsNotWaitedForLong)
{
    m_desktop.registry().frozen = true;
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(found(), nullptr);
    EXPECT_LT(clock.elapsed(), 2000);
}

TEST_F(AtspiLifetimeTest, WithoutASessionBusThereIsNoElement)
{
    EXPECT_EQ(test::await(AtspiFocusedElements(QString()).focused()), nullptr);
    AtspiFocusedElements nowhere(u"unix:path=/nowhere/at/all"_qs);
    EXPECT_EQ(test::await(nowhere.focused()), nullptr);
}

TEST(UsersSessionBusTest, IsTheOneThatTheSessionNamesOrTheUsersOwn)
{
    const test::ScratchFolder runtime;
    const Variable folder("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    {
        const Variable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/tmp/named");
        EXPECT_EQ(AtspiFocusedElements::usersSessionBus(), u"unix:path=/tmp/named"_qs);
    }
    const Variable address("DBUS_SESSION_BUS_ADDRESS", QByteArray());
    EXPECT_EQ(AtspiFocusedElements::usersSessionBus(), QString());
    const QString socket = runtime.write(u"bus"_qs, "");
    EXPECT_EQ(AtspiFocusedElements::usersSessionBus(), u"unix:path=" + socket);
}

} // namespace tulvane
