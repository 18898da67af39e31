#include "GnomeFixture.h"

#include <base/async/TaskFuture.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/gnome/IBusElements.h>

#include <QCoroFuture>

#include <csignal>

namespace tulvane::test {

namespace {

const QString said = QStringLiteral("Åpne «døra» 😀 nå. ");
const QString usual = QStringLiteral("xkb:us::eng");

class IBusElementsTest : public GnomeTest {
protected:
    void SetUp() override
    {
        GnomeTest::SetUp();
        if (desktop) {
            elements = std::make_unique<IBusElements>(std::make_shared<AtspiFocusedElements>(desktop->bus()),
                                                      std::make_shared<IBusCommit>(desktop->environment()));
        }
    }
    [[nodiscard]] std::shared_ptr<FocusedElement> field()
    {
        std::shared_ptr<FocusedElement> found;
        EXPECT_TRUE(waitUntil([&] { return (found = await(elements->focused())) != nullptr; }));
        return found;
    }
    QProcess& startHolder()
    {
        QProcess& holder = desktop->start(QStringLiteral(TULVANE_IBUS_COMMITTER));
        EXPECT_TRUE(waitUntil([&] { return holder.readAllStandardOutput().contains("engine"); }));
        EXPECT_EQ(engine(), QStringLiteral("tulvane"));
        return holder;
    }

    std::unique_ptr<IBusElements> elements;
};

TEST_F(IBusElementsTest, ATextIsCommittedExactlyAndTheEngineComesBack)
{
    startField();
    QString all;
    for (int i = 0; i < 5; ++i) {
        const auto found = field();
        ASSERT_TRUE(await(found->setSelectedText(said)));
        all += said;
        EXPECT_EQ(text(), all);
    }
    EXPECT_EQ(engine(), usual);
    // Typing goes on as before, with the user's own layout.
    desktop->press({39});
    EXPECT_TRUE(waitUntil([&] { return text() == all + QStringLiteral("ø"); }));
}

TEST_F(IBusElementsTest, AModifierThatIsHeldDownDoesNotMatter)
{
    startField();
    const auto found = field();
    desktop->down({29});
    EXPECT_TRUE(await(found->setSelectedText(said)));
    desktop->up({29});
    EXPECT_EQ(text(), said);
}

TEST_F(IBusElementsTest, NothingIsSaidToBeWrittenWhereNoFieldIs)
{
    EXPECT_EQ(await(elements->focused()), nullptr);
}

TEST_F(IBusElementsTest, WhereNoFieldListensToTheServiceNothingIsCommittedAndTheEngineStays)
{
    IBusCommit commit(desktop->environment());
    const auto never = []() -> QCoro::Task<bool> { co_return false; };
    EXPECT_EQ(await(futureOf(commit.commit(said, never))), IBusCommit::Outcome::noField);
    EXPECT_NE(engine(), QStringLiteral("tulvane"));
}

TEST_F(IBusElementsTest, APasswordIsNeverCommitted)
{
    QProcess& fields =
        desktop->start(QStringLiteral("/usr/bin/python3"),
                       {sourceFolder() + QStringLiteral("/tests/support/fields/gtk_fields.py")});
    fields.write("{\"show\": \"password\", \"text\": \"\", \"start\": 0, \"end\": 0}\n");
    QByteArray heard;
    ASSERT_TRUE(waitUntil([&] { return (heard += fields.readAllStandardOutput()).contains('\n'); }));
    IBusCommit commit(desktop->environment());
    const auto never = []() -> QCoro::Task<bool> { co_return false; };
    EXPECT_EQ(await(futureOf(commit.commit(said, never))), IBusCommit::Outcome::noField);
    // None is in force until the service has noticed the field.
    EXPECT_TRUE(waitUntil([&] { return engine() == usual; })) << qPrintable(engine());
    fields.terminate();
    fields.waitForFinished();
}

TEST_F(IBusElementsTest, TheSecondLayoutStillWorksAfterwards)
{
    const auto setSources = [](const char* sources) {
        desktop->run(QStringLiteral("gsettings"),
                     {QStringLiteral("set"), QStringLiteral("org.gnome.desktop.input-sources"),
                      QStringLiteral("sources"), QString::fromUtf8(sources)});
    };
    setSources("[('xkb', 'no'), ('xkb', 'us')]");
    startField();
    // The shell sets its engine anew when the layouts change, whatever is in force at that moment.
    runEventLoopFor(std::chrono::milliseconds(700));
    ASSERT_TRUE(await(field()->setSelectedText(said)));
    desktop->press({125, 57});
    const QString before = text();
    ASSERT_TRUE(waitUntil([&] {
        desktop->press({39});
        return text().endsWith(u';');
    })) << qPrintable(before);
    ASSERT_TRUE(await(field()->setSelectedText(said)));
    desktop->press({39});
    EXPECT_TRUE(waitUntil([&] { return text().endsWith(said + u';'); }));
    setSources("[('xkb', 'no')]");
    ASSERT_TRUE(waitUntil([&] {
        desktop->press({39});
        return text().endsWith(u'ø');
    }));
}

TEST_F(IBusElementsTest, WithoutTheServiceTheProgramIsAskedItself)
{
    startField();
    const auto found = field();
    QProcessEnvironment none = desktop->environment();
    none.insert(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/nonexistent"));
    IBusElements direct(std::make_shared<AtspiFocusedElements>(desktop->bus()),
                        std::make_shared<IBusCommit>(none));
    const auto element = await(direct.focused());
    ASSERT_NE(element, nullptr);
    EXPECT_TRUE(await(element->setSelectedText(said)));
    EXPECT_EQ(text(), said);
}

TEST_F(IBusElementsTest, AKilledProgramLeavesTheUsersEngine)
{
    startField();
    QProcess& holder = startHolder();
    holder.kill();
    ASSERT_TRUE(holder.waitForFinished());
    EXPECT_TRUE(waitUntil([&] { return engine() == usual; })) << qPrintable(engine());
    desktop->press({39});
    // What was committed before the end may arrive after it.
    EXPECT_TRUE(waitUntil([&] { return text().remove(u'.') == u"ø"; })) << qPrintable(text());
}

TEST_F(IBusElementsTest, AProgramThatIsEndedLeavesTheUsersEngine)
{
    startField();
    QProcess& holder = startHolder();
    holder.terminate();
    ASSERT_TRUE(holder.waitForFinished());
    EXPECT_TRUE(waitUntil([&] { return engine() == usual; })) << qPrintable(engine());
}

TEST(GnomeLayout, NamesTheEngineOfTheInputSource)
{
    EXPECT_EQ(GnomeLayout::engineOf(QStringLiteral("[('ibus', 'anthy'), ('xkb', 'no')]")),
              QStringLiteral("anthy"));
    EXPECT_EQ(GnomeLayout::engineOf(QStringLiteral("[('xkb', 'no'), ('ibus', 'anthy')]")), usual);
    EXPECT_EQ(GnomeLayout::engineOf(QStringLiteral("@a(ss) []")), usual);
}

/// On a desktop of its own, which has no such service afterwards.
TEST(IBusServiceTest, OneThatIsKilledMidwayIsNoHangAndNoClaim)
{
    TULVANE_NEEDS(WaylandDesktop::Kind::gnome);
    WaylandDesktop own(WaylandDesktop::Kind::gnome);
    QProcess& field = own.start(
        QStringLiteral("/usr/bin/python3"),
        {sourceFolder() + QStringLiteral("/tests/support/targets/gtk_target.py"), QStringLiteral("view")});
    ASSERT_TRUE(waitUntil([&] { return field.readAllStandardOutput().contains("ready"); }));
    IBusElements elements(std::make_shared<AtspiFocusedElements>(own.bus()),
                          std::make_shared<IBusCommit>(own.environment()));
    std::shared_ptr<FocusedElement> found;
    ASSERT_TRUE(waitUntil([&] { return (found = await(elements.focused())) != nullptr; }));
    const auto written = found->setSelectedText(said);
    own.perform(QStringLiteral("kill_input_method"));
    const bool isWritten = await(written);
    EXPECT_EQ(isWritten, await(found->value()) == said);
    EXPECT_TRUE(isWritten || found->mayStillArrive() || await(found->value()) == QString());
}

TEST(IBusServiceTest, OneThatReturnsIsUsedAgain)
{
    TULVANE_NEEDS(WaylandDesktop::Kind::gnome);
    WaylandDesktop own(WaylandDesktop::Kind::gnome);
    AtspiFocusedElements fields(own.bus());
    std::shared_ptr<FocusedElement> found;
    const auto edit = [&] {
        QProcess& field = own.start(QStringLiteral("/usr/bin/python3"),
                                    {sourceFolder() + QStringLiteral("/tests/support/targets/gtk_target.py"),
                                     QStringLiteral("view")});
        EXPECT_TRUE(waitUntil([&] { return field.readAllStandardOutput().contains("ready"); }));
        EXPECT_TRUE(waitUntil([&] { return (found = await(fields.focused())) != nullptr; }));
    };
    edit();
    IBusCommit commit(own.environment());
    const auto commits = [&](const QString& text) {
        const auto arrived = [&found, text]() -> QCoro::Task<bool> {
            const std::optional<QString> value = co_await found->value();
            co_return value && value->endsWith(text);
        };
        return await(futureOf(commit.commit(text, arrived)));
    };
    ASSERT_EQ(commits(QStringLiteral("before")), IBusCommit::Outcome::committed);
    own.perform(QStringLiteral("kill_input_method"));
    EXPECT_EQ(commits(QStringLiteral("without")), IBusCommit::Outcome::unavailable);
    own.perform(QStringLiteral("start_input_method"));
    // The shell comes back to it when it notices it, and with the next field that gets the focus then.
    EXPECT_TRUE(waitUntil([&] {
        edit();
        return commits(QStringLiteral("after")) == IBusCommit::Outcome::committed;
    }));
    EXPECT_EQ(await(found->value()), QStringLiteral("after"));
}

} // namespace

} // namespace tulvane::test
