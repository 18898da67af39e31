#include "ScriptedPortal.h"

#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/portal/PortalHotkeys.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>
#include <support/PrivateBus.h>
#include <support/ReturningBus.h>

#include <QUuid>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr KeyCombination altSpace{49, carbon::option};
constexpr KeyCombination controlAltD{2, carbon::control | carbon::option};
constexpr HotkeyId id{1, 1};

class PortalHotkeysTest : public testing::Test {
protected:
    PortalHotkeysTest() { start(); }

    void start()
    {
        hotkeys.emplace(std::make_shared<LastingBus>(bus.address()),
                        *XkbKeymap::fromNames(QStringLiteral("us")));
        hotkeys->setEventHandler([this](const HotkeyEvent& event) {
            edges.push_back(event.kind);
            return HotkeyDelivery::handled;
        });
        // As the registry does it.
        hotkeys->setChangeHandler([this] {
            ++changes;
            take(wanted);
        });
    }
    bool take(const KeyCombination& combination)
    {
        wanted = combination;
        token.reset();
        auto taken = hotkeys->registerHotkey(id, combination);
        error = taken ? std::nullopt : std::optional(taken.error());
        if (taken)
            token = std::move(*taken);
        return token != nullptr;
    }
    [[nodiscard]] bool awaitChanges(int count)
    {
        return waitUntil([&] { return changes >= count; });
    }
    void press(bool isDown)
    {
        const auto before = edges.size();
        portal.press(isDown);
        EXPECT_TRUE(waitUntil([&] { return edges.size() > before; }));
    }
    /// Whatever is on its way has arrived.
    static void settle() { runEventLoopFor(std::chrono::milliseconds(150)); }

    PrivateBus bus;
    ScriptedPortal portal{bus.connect()};
    std::optional<PortalHotkeys> hotkeys;
    std::unique_ptr<GlobalHotkeys::Registration> token;
    std::optional<HotkeyError> error;
    KeyCombination wanted;
    std::vector<HotkeyEventKind> edges;
    int changes = 0;
};

TEST_F(PortalHotkeysTest, BindsOnceAndTellsBothEdges)
{
    ASSERT_TRUE(take(altSpace));
    ASSERT_TRUE(awaitChanges(1));
    settle();
    EXPECT_EQ(changes, 1) << "the registry registers anew at a change, and that is no change again";
    EXPECT_EQ(portal.calls, (QStringList{u"CreateSession"_qs, u"ListShortcuts"_qs, u"BindShortcuts"_qs}));
    EXPECT_EQ(portal.preferred, QStringLiteral("ALT+space"));
    press(true);
    press(true);
    press(false);
    EXPECT_THAT(edges,
                ElementsAre(HotkeyEventKind::pressed, HotkeyEventKind::repeated, HotkeyEventKind::released));
}

TEST_F(PortalHotkeysTest, WhatTheSessionHasBoundIsNotAskedForAgain)
{
    portal.bindsAtSession = true;
    ASSERT_TRUE(take(controlAltD));
    ASSERT_TRUE(awaitChanges(1));
    EXPECT_EQ(portal.calls, (QStringList{u"CreateSession"_qs, u"ListShortcuts"_qs}));
    EXPECT_EQ(portal.preferred, QStringLiteral("CTRL+ALT+d"));
}

TEST_F(PortalHotkeysTest, TheDesktopsOwnWordForTheKeyIsShown)
{
    portal.trigger = QStringLiteral("Super+D");
    ASSERT_TRUE(take(altSpace));
    EXPECT_EQ(hotkeys->display(altSpace).text(), QStringLiteral("Alt+Space"));
    ASSERT_TRUE(awaitChanges(1));
    EXPECT_EQ(hotkeys->display(altSpace).text(), QStringLiteral("Super+D"));
    portal.rebind(QStringLiteral("Super+F5"));
    ASSERT_TRUE(awaitChanges(2));
    EXPECT_EQ(hotkeys->display(altSpace).text(), QStringLiteral("Super+F5"));
    EXPECT_EQ(portal.sessions(), 1);
}

TEST_F(PortalHotkeysTest, ADenialIsSaidOnceAndTryingAgainAsksAnew)
{
    portal.user = ScriptedPortal::User::declines;
    ASSERT_TRUE(take(altSpace));
    ASSERT_TRUE(awaitChanges(1));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), HotkeyError::Kind::unsupported);
    EXPECT_TRUE(error->description().contains(QStringLiteral("tulvane toggle")));
    settle();
    EXPECT_EQ(portal.sessions(), 1) << "nothing is asked again and again";
    EXPECT_TRUE(waitUntil([&] { return !portal.isOpen(); }));

    portal.user = ScriptedPortal::User::agrees;
    ASSERT_TRUE(take(altSpace));
    ASSERT_TRUE(awaitChanges(2));
    press(true);
    press(false);
}

TEST_F(PortalHotkeysTest, AnotherCombinationIsAnotherSession)
{
    ASSERT_TRUE(take(altSpace));
    ASSERT_TRUE(awaitChanges(1));
    ASSERT_TRUE(take(controlAltD));
    ASSERT_TRUE(awaitChanges(2));
    EXPECT_EQ(portal.preferred, QStringLiteral("CTRL+ALT+d"));
    EXPECT_EQ(portal.sessions(), 2);
    EXPECT_EQ(portal.calls.count(QStringLiteral("Close")), 1);
    press(true);
    press(false);
}

TEST_F(PortalHotkeysTest, WhatIsDroppedIsClosedAfterItsRelease)
{
    ASSERT_TRUE(take(altSpace));
    ASSERT_TRUE(awaitChanges(1));
    press(true);
    token.reset();
    settle();
    EXPECT_TRUE(portal.isOpen());
    press(false);
    EXPECT_THAT(edges, ElementsAre(HotkeyEventKind::pressed, HotkeyEventKind::released));
    EXPECT_TRUE(waitUntil([&] { return !portal.isOpen(); }));
}

TEST_F(PortalHotkeysTest, ASessionThatTheDesktopEndsIsSaidAndLetsGo)
{
    ASSERT_TRUE(take(altSpace));
    ASSERT_TRUE(awaitChanges(1));
    press(true);
    portal.endSession();
    ASSERT_TRUE(awaitChanges(2));
    EXPECT_THAT(edges, ElementsAre(HotkeyEventKind::pressed, HotkeyEventKind::released));
    EXPECT_TRUE(error);
}

TEST_F(PortalHotkeysTest, APortalThatStartsAnewIsAskedAnew)
{
    ASSERT_TRUE(take(altSpace));
    ASSERT_TRUE(awaitChanges(1));
    press(true);
    portal.restart();
    ASSERT_TRUE(awaitChanges(2));
    EXPECT_THAT(edges, ElementsAre(HotkeyEventKind::pressed, HotkeyEventKind::released));
    EXPECT_EQ(portal.sessions(), 2);
    press(true);
    press(false);
}

TEST(PortalHotkeysOnALastingBus, AKeyIsAskedForAgainOnABusThatHasComeBack)
{
    ReturningBus bus;
    const auto connect = [&] {
        return QDBusConnection::connectToBus(bus.address(), QUuid::createUuid().toString());
    };
    auto portal = std::make_unique<ScriptedPortal>(connect());
    PortalHotkeys hotkeys(std::make_shared<LastingBus>(bus.address()),
                          *XkbKeymap::fromNames(QStringLiteral("us")));
    std::vector<HotkeyEventKind> edges;
    hotkeys.setEventHandler([&](const HotkeyEvent& event) {
        edges.push_back(event.kind);
        return HotkeyDelivery::handled;
    });
    int changes = 0;
    hotkeys.setChangeHandler([&] { ++changes; });
    const auto token = hotkeys.registerHotkey(id, altSpace);
    ASSERT_TRUE(token);
    ASSERT_TRUE(waitUntil([&] { return changes == 1; }));
    for (int round = 0; round < 2; ++round) {
        edges.clear();
        portal->press(true);
        EXPECT_TRUE(waitUntil([&] { return edges.size() == 1; }));
        bus.kill();
        EXPECT_TRUE(waitUntil([&] { return edges.size() == 2; })) << "what is held is let go";
        portal.reset();
        bus.start();
        portal = std::make_unique<ScriptedPortal>(connect());
        EXPECT_TRUE(waitUntil([&] { return changes == round + 2; }, std::chrono::seconds(20)));
    }
}

TEST_F(PortalHotkeysTest, OneCombinationAtATimeAndNoneThatHasNoName)
{
    EXPECT_TRUE(hotkeys->isFree(altSpace));
    EXPECT_EQ(hotkeys->isFree({1000, carbon::option}).error(), HotkeyError::noSuchKey());
    EXPECT_THAT(portal.calls, IsEmpty()) << "asking is no reason for a dialog";
    ASSERT_TRUE(take(altSpace));
    EXPECT_EQ(hotkeys->registerHotkey({1, 2}, controlAltD).error().kind(), HotkeyError::Kind::taken);
}

TEST_F(PortalHotkeysTest, AnOpenDialogKeepsNobodyWaiting)
{
    portal.user = ScriptedPortal::User::isSilent;
    ASSERT_TRUE(take(altSpace));
    settle();
    EXPECT_EQ(changes, 0);
    hotkeys.reset();
    token.reset();
}

} // namespace

} // namespace tulvane::test
