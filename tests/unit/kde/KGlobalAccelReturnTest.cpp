// What becomes of KDE's hot keys when the service behind them, or the bus, ends and returns.
#include "ScriptedKGlobalAccel.h"

#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/OwnConnection.h>
#include <platform/linux/kde/KGlobalAccelHotKeys.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>
#include <support/ReturningBus.h>
#include <support/ScratchFolder.h>

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using testing::ElementsAre;

constexpr KeyCombination altSpace{49, carbon::option};
constexpr HotkeyId id{1, 1};

/// A bus that starts a program where the service is called while it is not there, as a user's does.
class StartingBus {
public:
    StartingBus()
    {
        QDir(m_folder.path()).mkpath(QStringLiteral("dbus-1/services"));
        m_folder.write(QStringLiteral("dbus-1/services/org.kde.kglobalaccel.service"),
                       "[D-BUS Service]\nName=org.kde.kglobalaccel\nExec=/usr/bin/touch " +
                           m_folder.file(QStringLiteral("started")).toUtf8() + "\n");
        qputenv("XDG_DATA_HOME", m_folder.path().toUtf8());
        bus.emplace();
    }
    StartingBus(const StartingBus&) = delete;
    StartingBus& operator=(const StartingBus&) = delete;
    ~StartingBus()
    {
        if (m_before.isNull())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", m_before);
    }
    [[nodiscard]] bool hasStarted() const { return QFile::exists(m_folder.file(QStringLiteral("started"))); }

    std::optional<ReturningBus> bus;

private:
    QByteArray m_before = qgetenv("XDG_DATA_HOME");
    ScratchFolder m_folder;
};

class KGlobalAccelReturnTest : public testing::Test {
protected:
    KGlobalAccelReturnTest()
    {
        service.appear(address());
        hotkeys.emplace(KGlobalAccelHotKeys::Options{std::make_shared<LastingBus>(address()), config.path()});
        hotkeys->setEventHandler([this](const HotkeyEvent& event) {
            edges.push_back(event.kind);
            return HotkeyDelivery::handled;
        });
        hotkeys->setChangeHandler([this] { take(); });
        take();
    }
    ~KGlobalAccelReturnTest() override
    {
        token.reset();
        hotkeys.reset();
    }

    [[nodiscard]] QString address() const { return starting.bus->address(); }
    /// As the registry does it.
    void take()
    {
        token.reset();
        auto taken = hotkeys->registerHotkey(id, altSpace);
        error = taken ? std::nullopt : std::optional(taken.error());
        if (taken)
            token = std::move(*taken);
    }
    [[nodiscard]] bool isUnreachable() const
    {
        return !token && error && error->kind() == HotkeyError::Kind::unreachable;
    }
    void press(bool isDown)
    {
        const auto before = edges.size();
        service.press(isDown);
        EXPECT_TRUE(waitUntil([&] { return edges.size() > before; }));
    }
    /// Whatever is on its way has arrived.
    static void settle() { runEventLoopFor(std::chrono::milliseconds(150)); }

    StartingBus starting;
    ScratchFolder config;
    ScriptedKGlobalAccel service;
    std::optional<KGlobalAccelHotKeys> hotkeys;
    std::unique_ptr<GlobalHotkeys::Registration> token;
    std::optional<HotkeyError> error;
    std::vector<HotkeyEventKind> edges;
};

TEST_F(KGlobalAccelReturnTest, AServiceThatStartsAnewGetsTheHotkeyAgain)
{
    ASSERT_NE(token, nullptr);
    press(true);
    service.disappear();
    ASSERT_TRUE(waitUntil([&] { return isUnreachable(); }));
    EXPECT_THAT(edges, ElementsAre(HotkeyEventKind::pressed, HotkeyEventKind::released));

    service.appear(address());
    ASSERT_TRUE(waitUntil([&] { return token != nullptr; }));
    EXPECT_EQ(service.active(), QStringList{QStringLiteral("hotkey-1")});
    press(true);
    press(false);
    EXPECT_EQ(edges.size(), 4U);
}

TEST_F(KGlobalAccelReturnTest, AServiceMayHaveItsNameBeforeItDoesItsWork)
{
    service.disappear();
    ASSERT_TRUE(waitUntil([&] { return isUnreachable(); }));
    service.appear(address(), false);
    settle();
    EXPECT_TRUE(isUnreachable()) << "nothing is said to be registered that is not";
    service.doItsWork();
    ASSERT_TRUE(waitUntil([&] { return token != nullptr; }));
    press(true);
    press(false);
}

TEST_F(KGlobalAccelReturnTest, AnAbsentServiceIsNotStartedByWhatIsAskedOfIt)
{
    press(true);
    service.disappear();
    ASSERT_TRUE(waitUntil([&] { return isUnreachable(); }));
    hotkeys.reset();
    EXPECT_FALSE(KGlobalAccel(std::make_shared<LastingBus>(address())).defaultKeys({}).has_value());
    settle();
    EXPECT_FALSE(starting.hasStarted());
}

TEST_F(KGlobalAccelReturnTest, ABusThatReturnsBringsTheHotkeyBack)
{
    press(true);
    starting.bus->kill();
    ASSERT_TRUE(waitUntil([&] { return isUnreachable(); }));
    EXPECT_THAT(edges, ElementsAre(HotkeyEventKind::pressed, HotkeyEventKind::released));
    service.disappear();
    starting.bus->start();
    service.appear(address());
    ASSERT_TRUE(waitUntil([&] { return token != nullptr; }));
    press(true);
    press(false);
}

TEST_F(KGlobalAccelReturnTest, WhatIsDroppedWhileItIsHeldIsNotKeptForAServiceThatHasGone)
{
    hotkeys->setChangeHandler({});
    press(true);
    token.reset();
    service.disappear();
    ASSERT_TRUE(waitUntil([&] { return edges.size() == 2; }));
    EXPECT_EQ(edges.back(), HotkeyEventKind::released);
}

TEST_F(KGlobalAccelReturnTest, ChangesOfTheKeyboardAreFollowedOverTheNewBus)
{
    starting.bus->kill();
    ASSERT_TRUE(waitUntil([&] { return isUnreachable(); }));
    service.disappear();
    starting.bus->start();
    service.appear(address());
    ASSERT_TRUE(waitUntil([&] { return token != nullptr; }));
    const auto calls = service.calls().size();
    config.write(QStringLiteral("kxkbrc"), "[Layout]\nLayoutList=no\nUse=true\n");
    OwnConnection(address()).bus().send(QDBusMessage::createSignal(
        QStringLiteral("/Layouts"), QStringLiteral("org.kde.keyboard"), QStringLiteral("reloadConfig")));
    EXPECT_TRUE(waitUntil([&] { return service.calls().size() > calls; })) << "it is registered anew";
}

} // namespace

} // namespace tulvane::test
