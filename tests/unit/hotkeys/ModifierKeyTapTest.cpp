#include <hotkeys/ModifierKeyTap.h>
#include <platform/fake/FakeModifierEvents.h>
#include <ports/KeyModifiers.h>
#include <support/LogCapture.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace tulvane {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Type = ModifierEvent::Type;

class ModifierKeyTapTest : public testing::Test {
protected:
    std::unique_ptr<ModifierKeyTap> tapOn(qint64 keyCode)
    {
        return std::make_unique<ModifierKeyTap>(
            m_events, keyCode, [this](bool isDown) { m_changes.push_back(isDown); }, [this] { ++m_losses; });
    }

    FakeModifierEvents m_events;
    std::vector<bool> m_changes;
    int m_losses = 0;
};

TEST_F(ModifierKeyTapTest, ReportsEachPressAndEachReleaseOnce)
{
    struct Row {
        qint64 keyCode;
        quint64 flag;
    };
    for (const Row row :
         {Row{54, 0x100000}, Row{60, 0x20000}, Row{61, 0x80000}, Row{62, 0x40000}, Row{63, 0x800000}}) {
        m_changes.clear();
        const auto tap = tapOn(row.keyCode);
        ASSERT_TRUE(tap->start());
        m_events.sendFlags(row.keyCode, row.flag);
        EXPECT_TRUE(tap->isDown());
        m_events.sendFlags(row.keyCode, row.flag | 0x10000);
        m_events.sendFlags(row.keyCode, 0x10000);
        m_events.sendFlags(row.keyCode, 0);
        EXPECT_THAT(m_changes, ElementsAre(true, false)) << row.keyCode;
        EXPECT_FALSE(tap->isDown());
    }
}

TEST_F(ModifierKeyTapTest, LooksAtItsOwnFlagOnly)
{
    const auto tap = tapOn(61);
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(61, ~quint64{0x80000});
    EXPECT_THAT(m_changes, IsEmpty());
}

TEST_F(ModifierKeyTapTest, AKeyWithoutAFlagChangesSidesAtEachEvent)
{
    const auto tap = tapOn(57);
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(57, 0x10000);
    m_events.sendFlags(57, 0x10000);
    m_events.sendFlags(57, 0);
    EXPECT_THAT(m_changes, ElementsAre(true, false, true));
}

TEST_F(ModifierKeyTapTest, IgnoresOtherKeysThatSetTheSameFlag)
{
    const auto tap = tapOn(60);
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(56, eventFlags::shift);
    m_events.sendFlags(56, 0);
    EXPECT_THAT(m_changes, IsEmpty());
}

TEST_F(ModifierKeyTapTest, MissesTheReleaseWhileTheOtherSideIsHeld)
{
    const auto tap = tapOn(54);
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(55, eventFlags::command);
    m_events.sendFlags(54, eventFlags::command);
    EXPECT_THAT(m_changes, ElementsAre(true));
    m_events.sendFlags(54, eventFlags::command);
    m_events.sendFlags(55, 0);
    EXPECT_THAT(m_changes, ElementsAre(true));
    m_events.sendFlags(54, eventFlags::command);
    EXPECT_THAT(m_changes, ElementsAre(true)) << "still down, as far as the flag can tell";
    m_events.sendFlags(54, 0);
    EXPECT_THAT(m_changes, ElementsAre(true, false));
}

TEST_F(ModifierKeyTapTest, IsSwitchedOnAgainWhenTheSystemSwitchesItOff)
{
    const auto tap = tapOn(61);
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(61, eventFlags::option);
    for (const Type type : {Type::disabledByTimeout, Type::disabledByUserInput}) {
        m_events.send({type, 61, 0});
        EXPECT_TRUE(m_events.hasOneEnabledTap());
        EXPECT_TRUE(tap->isDown());
    }
    EXPECT_EQ(m_events.enables(), 3);
    EXPECT_THAT(m_changes, ElementsAre(true));
    m_events.sendFlags(61, 0);
    EXPECT_THAT(m_changes, ElementsAre(true, false));
}

TEST_F(ModifierKeyTapTest, StartingTwiceInstallsOneTap)
{
    const test::LogCapture log;
    const auto tap = tapOn(61);
    EXPECT_FALSE(tap->isRunning());
    EXPECT_TRUE(tap->start());
    EXPECT_TRUE(tap->start());
    EXPECT_TRUE(tap->isRunning());
    EXPECT_EQ(m_events.created(), 1);
    EXPECT_THAT(log.texts("hotkey", QtInfoMsg),
                ElementsAre(QStringLiteral("Modifier key tap started for key code 61")));
}

TEST_F(ModifierKeyTapTest, AFailedStartLeavesItStoppedAndSaysWhy)
{
    const test::LogCapture log;
    m_events.failTaps(ModifierEventsError::notPermitted());
    const auto tap = tapOn(62);
    EXPECT_FALSE(tap->start());
    EXPECT_FALSE(tap->isRunning());
    EXPECT_EQ(tap->failure(), ModifierEventsError::notPermitted());
    EXPECT_THAT(log.lines(), IsEmpty());

    m_events.failTaps({});
    EXPECT_TRUE(tap->start());
    EXPECT_EQ(tap->failure(), std::nullopt);
}

TEST_F(ModifierKeyTapTest, StoppingReportsNoReleaseAndBeginsAfresh)
{
    const auto tap = tapOn(61);
    tap->stop();
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(61, eventFlags::option);
    tap->stop();
    tap->stop();
    EXPECT_FALSE(tap->isRunning());
    EXPECT_FALSE(tap->isDown());
    EXPECT_THAT(m_events.keyCodes(), IsEmpty());
    m_events.sendFlags(61, 0);
    EXPECT_THAT(m_changes, ElementsAre(true));

    ASSERT_TRUE(tap->start());
    m_events.sendFlags(61, eventFlags::option);
    EXPECT_THAT(m_changes, ElementsAre(true, true));
}

TEST_F(ModifierKeyTapTest, MayBeDestroyedByItsOwnHandler)
{
    std::unique_ptr<ModifierKeyTap> tap;
    tap = std::make_unique<ModifierKeyTap>(m_events, 61, [&](bool) { tap.reset(); });
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(61, eventFlags::option);
    EXPECT_EQ(tap, nullptr);
    EXPECT_THAT(m_events.keyCodes(), IsEmpty());
}

TEST_F(ModifierKeyTapTest, TellsWhenTheDesktopHasEnded)
{
    const auto tap = tapOn(61);
    ASSERT_TRUE(tap->start());
    m_events.sendFlags(61, eventFlags::option);
    m_events.send({Type::lost, 0, 0});
    EXPECT_EQ(m_losses, 1);
    EXPECT_FALSE(tap->isRunning());
    EXPECT_FALSE(tap->isDown());
    EXPECT_EQ(tap->failure(), ModifierEventsError::unreachable());
    EXPECT_THAT(m_changes, ElementsAre(true));
}

TEST_F(ModifierKeyTapTest, AnEventOnAnotherThreadStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto tap = tapOn(61);
    ASSERT_TRUE(tap->start());
    EXPECT_DEATH(std::thread([this] { m_events.sendFlags(61, eventFlags::option); }).join(),
                 "outside the main thread");
}

} // namespace

} // namespace tulvane
