#include <hotkeys/KeyboardShortcuts.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/fake/FakeUserDefaults.h>
#include <ports/ModifierEventsError.h>
#include <support/LogCapture.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace tulvane {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = RegistrationState::Kind;
using EventKind = HotkeyEventKind;
using Source = HotkeyEvent::Source;

const QString dictateKey = QStringLiteral("KeyboardShortcuts_dictate");
const QString optionSpaceJson = QStringLiteral("{\"carbonKeyCode\":49,\"carbonModifiers\":2048}");
constexpr KeyCombination optionSpace{49, 0x800};
constexpr KeyCombination controlF5{96, 0x1000};
const ShortcutName plain{QStringLiteral("plain"), {}};

class KeyboardShortcutsTest : public testing::Test {
protected:
    KeyboardShortcutsTest() { make(); }

    /// Another start of the program, over the same stored preferences.
    void make()
    {
        m_shortcuts.reset();
        m_shortcuts = std::make_unique<KeyboardShortcuts>(m_defaults, m_hotkeys);
        QObject::connect(m_shortcuts.get(), &KeyboardShortcuts::posted, m_shortcuts.get(),
                         [this](const QString& notification, const QVariantMap& userInfo) {
                             m_posted.push_back({notification, userInfo});
                         });
    }
    void listen(const ShortcutName& name)
    {
        m_shortcuts->onKeyDown(name,
                               [this, name] { m_heard.append(name.rawName + QStringLiteral(" down")); });
        m_shortcuts->onKeyUp(name, [this, name] { m_heard.append(name.rawName + QStringLiteral(" up")); });
    }
    void declareAndListen()
    {
        m_shortcuts->declare(ShortcutName::dictate());
        listen(ShortcutName::dictate());
    }
    [[nodiscard]] RegistrationState state() const
    {
        return m_shortcuts->registration(ShortcutName::dictate());
    }

    FakeUserDefaults m_defaults;
    FakeGlobalHotkeys m_hotkeys;
    std::vector<std::pair<QString, QVariantMap>> m_posted;
    QStringList m_heard;
    std::unique_ptr<KeyboardShortcuts> m_shortcuts;
};

TEST_F(KeyboardShortcutsTest, TheFirstLaunchStoresTheDefault)
{
    declareAndListen();
    EXPECT_EQ(m_defaults.value(dictateKey), QVariant(optionSpaceJson));
    EXPECT_EQ(m_shortcuts->getShortcut(ShortcutName::dictate()), (Shortcut{49, 0x800}));
    EXPECT_TRUE(m_hotkeys.isRegistered(optionSpace));
    EXPECT_EQ(state(), (RegistrationState{Kind::registered, {}}));
}

TEST_F(KeyboardShortcutsTest, ADefaultDoesNotReplaceWhatIsStored)
{
    const QString stored = QStringLiteral("{\"carbonKeyCode\":96,\"carbonModifiers\":4096}");
    (void)m_defaults.set(dictateKey, stored);
    declareAndListen();
    EXPECT_EQ(m_defaults.value(dictateKey), QVariant(stored));
    EXPECT_TRUE(m_hotkeys.isRegistered(controlF5));
    EXPECT_FALSE(m_hotkeys.isRegistered(optionSpace));
}

TEST_F(KeyboardShortcutsTest, ANameIsDeclaredOnceInAProcess)
{
    m_shortcuts->declare(ShortcutName::dictate());
    (void)m_defaults.remove(dictateKey);
    m_shortcuts->declare(ShortcutName::dictate());
    EXPECT_FALSE(m_defaults.contains(dictateKey));
}

TEST_F(KeyboardShortcutsTest, AClearedShortcutStaysClearedAtTheNextLaunch)
{
    declareAndListen();
    m_shortcuts->setShortcut({}, ShortcutName::dictate());
    EXPECT_EQ(m_defaults.value(dictateKey), QVariant(false));
    EXPECT_EQ(state(), (RegistrationState{Kind::noShortcut, {}}));
    EXPECT_THAT(m_hotkeys.registered(), IsEmpty());

    make();
    declareAndListen();
    EXPECT_EQ(m_defaults.value(dictateKey), QVariant(false));
    EXPECT_EQ(m_shortcuts->getShortcut(ShortcutName::dictate()), std::nullopt);
    EXPECT_THAT(m_hotkeys.registered(), IsEmpty());
}

TEST_F(KeyboardShortcutsTest, ANameWithoutADefaultIsRemovedWhenItIsCleared)
{
    m_shortcuts->declare(plain);
    EXPECT_FALSE(m_defaults.contains(QStringLiteral("KeyboardShortcuts_plain")));
    m_shortcuts->setShortcut(Shortcut{96, 0x1000}, plain);
    EXPECT_TRUE(m_defaults.contains(QStringLiteral("KeyboardShortcuts_plain")));
    m_shortcuts->setShortcut({}, plain);
    EXPECT_FALSE(m_defaults.contains(QStringLiteral("KeyboardShortcuts_plain")));
}

TEST_F(KeyboardShortcutsTest, AStoredValueThatMakesNoSenseIsNoShortcut)
{
    for (const QVariant& stored :
         {QVariant(QStringLiteral("not json")), QVariant(false), QVariant(true), QVariant(49)}) {
        (void)m_defaults.set(dictateKey, stored);
        make();
        declareAndListen();
        EXPECT_EQ(m_shortcuts->getShortcut(ShortcutName::dictate()), std::nullopt);
        EXPECT_THAT(m_hotkeys.registered(), IsEmpty());
        EXPECT_EQ(state(), (RegistrationState{Kind::noShortcut, {}}));
        EXPECT_EQ(m_defaults.value(dictateKey), stored) << "nothing is stored over it";
        EXPECT_THAT(m_shortcuts->display(ShortcutName::dictate()).caps, IsEmpty());
    }
}

TEST_F(KeyboardShortcutsTest, IsRegisteredOnlyOnceSomebodyListens)
{
    m_shortcuts->declare(ShortcutName::dictate());
    EXPECT_THAT(m_hotkeys.registered(), IsEmpty());
    EXPECT_EQ(state(), (RegistrationState{Kind::unused, {}}));
    listen(ShortcutName::dictate());
    EXPECT_THAT(m_hotkeys.registered(), ElementsAre(std::pair{HotkeyId{0x544C564B, 1}, optionSpace}));
    EXPECT_EQ(m_hotkeys.attempts(), 1) << "the second handler needs no second registration";
}

TEST_F(KeyboardShortcutsTest, AChangeIsToldAndRegisteredAnew)
{
    declareAndListen();
    m_shortcuts->setShortcut(Shortcut{96, 0x1000}, ShortcutName::dictate());
    EXPECT_EQ(m_defaults.value(dictateKey),
              QVariant(QStringLiteral("{\"carbonKeyCode\":96,\"carbonModifiers\":4096}")));
    EXPECT_THAT(m_posted,
                ElementsAre(std::pair{QStringLiteral("KeyboardShortcuts_shortcutByNameDidChange"),
                                      QVariantMap{{QStringLiteral("name"), QStringLiteral("dictate")}}}));
    EXPECT_THAT(m_hotkeys.registered(), ElementsAre(std::pair{HotkeyId{0x544C564B, 1}, controlF5}));
    m_hotkeys.press(optionSpace);
    m_hotkeys.press(controlF5);
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("dictate down")));
}

TEST_F(KeyboardShortcutsTest, IdsCountUpFromOne)
{
    declareAndListen();
    m_shortcuts->setShortcut(Shortcut{96, 0x1000}, plain);
    listen(plain);
    EXPECT_THAT(m_hotkeys.registered(),
                testing::UnorderedElementsAre(std::pair{HotkeyId{0x544C564B, 1}, optionSpace},
                                              std::pair{HotkeyId{0x544C564B, 2}, controlF5}));
    m_hotkeys.press(controlF5);
    m_hotkeys.release(controlF5);
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("plain down"), QStringLiteral("plain up")));
}

TEST_F(KeyboardShortcutsTest, AHeldKeyIsOnePressAndOneRelease)
{
    declareAndListen();
    m_hotkeys.press(optionSpace);
    for (int repeats = 0; repeats < 1800; ++repeats)
        m_hotkeys.repeat(optionSpace);
    m_hotkeys.release(optionSpace);
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("dictate down"), QStringLiteral("dictate up")));
}

TEST_F(KeyboardShortcutsTest, EventsAreAnsweredByWhetherTheyAreOurs)
{
    declareAndListen();
    const auto deliver = [this](Source source, EventKind kind, HotkeyId id, KeyCombination combination) {
        return m_hotkeys.deliver({source, kind, id, combination});
    };
    constexpr HotkeyId ours{0x544C564B, 1};
    const auto handled = HotkeyDelivery::handled;
    const auto notHandled = HotkeyDelivery::eventNotHandled;
    EXPECT_EQ(deliver(Source::hotkey, EventKind::pressed, ours, {}), handled);
    EXPECT_EQ(deliver(Source::hotkey, EventKind::released, ours, {}), handled);
    EXPECT_THAT(m_heard, SizeIs(2));
    EXPECT_EQ(deliver(Source::hotkey, EventKind::repeated, ours, {}), notHandled);
    EXPECT_EQ(deliver(Source::hotkey, EventKind::pressed, {0x12345678, 1}, optionSpace), notHandled);
    EXPECT_EQ(deliver(Source::hotkey, EventKind::pressed, {0x544C564B, 2}, optionSpace), notHandled);
    EXPECT_THAT(m_heard, SizeIs(2));

    EXPECT_EQ(deliver(Source::rawKey, EventKind::pressed, {}, optionSpace), handled);
    EXPECT_EQ(deliver(Source::rawKey, EventKind::released, {}, optionSpace), handled);
    EXPECT_THAT(m_heard, SizeIs(4));
    EXPECT_EQ(deliver(Source::rawKey, EventKind::pressed, {}, {49, 0}), notHandled);
    EXPECT_EQ(deliver(Source::rawKey, EventKind::pressed, {}, {49, 0x900}), notHandled);
    EXPECT_EQ(deliver(Source::rawKey, EventKind::pressed, {}, {50, 0x800}), notHandled);
    EXPECT_THAT(m_heard, SizeIs(4));
}

TEST_F(KeyboardShortcutsTest, AFailureIsLoggedAndStaysVisible)
{
    const test::LogCapture log;
    m_hotkeys.takeElsewhere(optionSpace);
    declareAndListen();
    EXPECT_EQ(state(), (RegistrationState{Kind::failed, HotkeyError::taken(-9878)}));
    const QStringList lines = log.texts("hotkey", QtCriticalMsg);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_TRUE(
        lines.front().startsWith(QStringLiteral("Error registering hotkey key code 49, modifiers 2048")));
    EXPECT_TRUE(lines.front().contains(QStringLiteral("-9878")));
    EXPECT_EQ(m_defaults.value(dictateKey), QVariant(optionSpaceJson)) << "the shortcut stays stored";
    m_hotkeys.press(optionSpace);
    EXPECT_THAT(m_heard, IsEmpty());
}

TEST_F(KeyboardShortcutsTest, UnknownModifiersNeverLeaveABareKey)
{
    declareAndListen();
    for (const char* const modifiers : {"16384", "1024", "18432", "4294967295"}) {
        ASSERT_TRUE(m_defaults.set(
            dictateKey,
            QStringLiteral("{\"carbonKeyCode\":49,\"carbonModifiers\":%1}").arg(QLatin1String(modifiers))));
        m_shortcuts->registerAgain();
        EXPECT_EQ(state(), (RegistrationState{Kind::failed, HotkeyError::outOfRange()})) << modifiers;
        EXPECT_THAT(m_hotkeys.registered(), IsEmpty()) << modifiers;
        EXPECT_EQ(m_shortcuts->display(ShortcutName::dictate()).text(), QStringLiteral("Key 49"))
            << modifiers;
    }
}

TEST_F(KeyboardShortcutsTest, AStoredCombinationThatProgramsPasteWithIsNotTakenFromThem)
{
    declareAndListen();
    // Ctrl+V, Ctrl+Shift+V, Ctrl+C, Ctrl+Y and Shift+Insert.
    for (const auto& [key, modifiers] : {std::pair(9, 4096), std::pair(9, 4608), std::pair(8, 4096),
                                         std::pair(16, 4096), std::pair(114, 512)}) {
        ASSERT_TRUE(m_defaults.set(
            dictateKey,
            QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}").arg(key).arg(modifiers)));
        m_shortcuts->registerAgain();
        EXPECT_EQ(state(), (RegistrationState{Kind::failed, HotkeyError::pastes()})) << key;
        EXPECT_THAT(m_hotkeys.registered(), IsEmpty()) << key;
    }
    m_shortcuts->setShortcut(Shortcut{49, 2048}, ShortcutName::dictate());
    EXPECT_EQ(state().kind, Kind::registered);
}

TEST_F(KeyboardShortcutsTest, AKeyThatNoKeyboardHasIsWrittenByItsNumber)
{
    ASSERT_TRUE(m_defaults.set(dictateKey,
                               QStringLiteral("{\"carbonKeyCode\":5000000000,\"carbonModifiers\":2048}")));
    declareAndListen();
    EXPECT_EQ(state().kind, Kind::failed);
    EXPECT_EQ(m_shortcuts->display(ShortcutName::dictate()).text(), QStringLiteral("Key 5000000000"));
}

TEST_F(KeyboardShortcutsTest, WhatFailedCanBeTriedAgain)
{
    m_hotkeys.takeElsewhere(optionSpace);
    declareAndListen();
    int told = 0;
    QObject::connect(m_shortcuts.get(), &KeyboardShortcuts::registrationsChanged, m_shortcuts.get(),
                     [&] { ++told; });
    m_hotkeys.freeElsewhere(optionSpace);
    m_shortcuts->registerAgain();
    EXPECT_EQ(state(), (RegistrationState{Kind::registered, {}}));
    EXPECT_EQ(told, 1);
}

TEST_F(KeyboardShortcutsTest, NumbersBeyond32BitsAreNotRegistered)
{
    const test::LogCapture log;
    for (const Shortcut shortcut :
         {Shortcut{Q_INT64_C(1) << 32, 0x800}, Shortcut{49, Q_INT64_C(1) << 32}, Shortcut{-1, 0x800}}) {
        m_shortcuts->setShortcut(shortcut, ShortcutName::dictate());
        listen(ShortcutName::dictate());
        EXPECT_EQ(state(), (RegistrationState{Kind::failed, HotkeyError::outOfRange()}));
        EXPECT_EQ(m_shortcuts->getShortcut(ShortcutName::dictate()), shortcut);
    }
    EXPECT_EQ(m_hotkeys.attempts(), 0);
    EXPECT_TRUE(log.contains(QStringLiteral("Error registering hotkey key code 4294967296")));
}

TEST_F(KeyboardShortcutsTest, AnotherKeyboardRegistersAnew)
{
    declareAndListen();
    m_hotkeys.takeElsewhere(optionSpace);
    m_hotkeys.changeKeyboard();
    EXPECT_EQ(state().kind, Kind::failed);
    m_hotkeys.freeElsewhere(optionSpace);
    m_hotkeys.changeKeyboard();
    EXPECT_EQ(state(), (RegistrationState{Kind::registered, {}}));
    EXPECT_THAT(m_hotkeys.registered(), SizeIs(1));
    m_hotkeys.press(optionSpace);
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("dictate down")));
}

TEST_F(KeyboardShortcutsTest, AKeyThatIsHeldAcrossAChangeStillGetsItsRelease)
{
    declareAndListen();
    m_hotkeys.press(optionSpace);
    m_hotkeys.changeKeyboard();
    m_hotkeys.release(optionSpace);
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("dictate down"), QStringLiteral("dictate up")));
}

TEST_F(KeyboardShortcutsTest, ACombinationThatWasClearedIsNoLongerHeard)
{
    declareAndListen();
    m_shortcuts->setShortcut(std::nullopt, ShortcutName::dictate());
    EXPECT_EQ(m_hotkeys.deliver({Source::rawKey, EventKind::pressed, {}, optionSpace}),
              HotkeyDelivery::eventNotHandled);
    EXPECT_THAT(m_heard, IsEmpty());
}

TEST_F(KeyboardShortcutsTest, TheDesktopLearnsWhatTheUserChose)
{
    m_shortcuts->declare(ShortcutName::dictate());
    EXPECT_THAT(m_hotkeys.chosen(), IsEmpty()) << "a default is no choice";
    m_shortcuts->setShortcut(Shortcut{96, 0x1000}, ShortcutName::dictate());
    m_shortcuts->setShortcut(std::nullopt, ShortcutName::dictate());
    EXPECT_THAT(m_hotkeys.chosen(), ElementsAre(controlF5));
}

TEST_F(KeyboardShortcutsTest, NothingIsRegisteredWhileTheUserRecords)
{
    declareAndListen();
    m_shortcuts->setRecorderActive(true);
    m_shortcuts->setRecorderActive(true);
    EXPECT_THAT(m_hotkeys.registered(), IsEmpty());
    EXPECT_EQ(state(), (RegistrationState{Kind::paused, {}}));
    m_shortcuts->setShortcut(Shortcut{96, 0x1000}, ShortcutName::dictate());
    EXPECT_THAT(m_hotkeys.registered(), IsEmpty());
    m_shortcuts->setRecorderActive(false);
    EXPECT_TRUE(m_hotkeys.isRegistered(controlF5));
    const QString status = QStringLiteral("KeyboardShortcuts_recorderActiveStatusDidChange");
    ASSERT_THAT(m_posted, SizeIs(3));
    EXPECT_EQ(m_posted[0], std::pair(status, QVariantMap{{QStringLiteral("isActive"), true}}));
    EXPECT_EQ(m_posted[2], std::pair(status, QVariantMap{{QStringLiteral("isActive"), false}}));
}

TEST_F(KeyboardShortcutsTest, AFailedWriteIsToldAndTheShortcutHolds)
{
    const test::LogCapture log;
    declareAndListen();
    const auto error = DefaultsError::notWritten(QStringLiteral("file"), QStringLiteral("full"));
    m_defaults.failWrites(error);
    QList<std::pair<QString, DefaultsError>> told;
    QObject::connect(m_shortcuts.get(), &KeyboardShortcuts::writeFailed, m_shortcuts.get(),
                     [&](const QString& name, const DefaultsError& why) { told.append({name, why}); });
    m_shortcuts->setShortcut(Shortcut{96, 0x1000}, ShortcutName::dictate());
    EXPECT_THAT(told, ElementsAre(std::pair(QStringLiteral("dictate"), error)));
    EXPECT_TRUE(m_hotkeys.isRegistered(controlF5));
    EXPECT_THAT(log.texts("hotkey", QtCriticalMsg),
                ElementsAre(QStringLiteral("Could not store the shortcut dictate")));
}

TEST_F(KeyboardShortcutsTest, AHandlerMayChangeTheShortcut)
{
    declareAndListen();
    m_shortcuts->onKeyDown(ShortcutName::dictate(),
                           [this] { m_shortcuts->setShortcut({}, ShortcutName::dictate()); });
    m_hotkeys.press(optionSpace);
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("dictate down")));
    EXPECT_THAT(m_hotkeys.registered(), IsEmpty());
}

TEST_F(KeyboardShortcutsTest, IsWrittenAsTheDesktopWritesIt)
{
    m_shortcuts->declare(ShortcutName::dictate());
    EXPECT_EQ(m_shortcuts->display(ShortcutName::dictate()).caps,
              (QStringList{QStringLiteral("⌥"), QStringLiteral("Space")}));
    EXPECT_EQ(m_shortcuts->display(ShortcutName::dictate()).text(), QStringLiteral("⌥Space"));
}

TEST_F(KeyboardShortcutsTest, AnEventOnAnotherThreadStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    declareAndListen();
    EXPECT_DEATH(std::thread([this] { m_hotkeys.press(optionSpace); }).join(), "outside the main thread");
}

TEST_F(KeyboardShortcutsTest, EventsAfterItsEndReachNobody)
{
    declareAndListen();
    m_shortcuts.reset();
    EXPECT_THAT(m_hotkeys.registered(), IsEmpty());
    EXPECT_EQ(m_hotkeys.deliver({Source::hotkey, EventKind::pressed, {0x544C564B, 1}, optionSpace}),
              HotkeyDelivery::eventNotHandled);
    m_hotkeys.changeKeyboard();
}

TEST(HotkeyError, SaysWhatToDo)
{
    const auto text = [](const HotkeyError& error) { return error.description(); };
    EXPECT_EQ(
        text(HotkeyError::taken(10)),
        QStringLiteral("Another program already uses this key combination. Choose another one, or free it in "
                       "that program."));
    EXPECT_EQ(text(HotkeyError::noSuchKey()),
              QStringLiteral("This keyboard has no such key. Choose another combination."));
    EXPECT_EQ(text(HotkeyError::outOfRange()),
              QStringLiteral("The stored key combination makes no sense. Choose another one."));
    EXPECT_EQ(
        text(HotkeyError::pastes()),
        QStringLiteral("Programs copy or paste with this key combination, and dictated texts are pasted."));
    EXPECT_EQ(text(HotkeyError::unsupported(QStringLiteral("why"))), QStringLiteral("why"));
    EXPECT_EQ(
        text(HotkeyError::unreachable()),
        QStringLiteral("The desktop does not answer, so no hotkey can be registered. Start Tulvane again."));
    EXPECT_EQ(text(HotkeyError::refused(3)),
              QStringLiteral("The system refused this key combination (error 3). Choose another one."));
}

TEST(ModifierEventsError, SaysWhatToDo)
{
    const auto text = [](const ModifierEventsError& error) { return error.description(); };
    EXPECT_EQ(text(ModifierEventsError::notPermitted()),
              QStringLiteral(
                  "Tulvane may not watch the keyboard. Allow input monitoring in the privacy settings."));
    EXPECT_EQ(text(ModifierEventsError::keyNotSeen(QStringLiteral("fn"))),
              QStringLiteral("The key fn never reaches programs on this desktop. Choose another key."));
    EXPECT_EQ(text(ModifierEventsError::unsupported(QStringLiteral("why"))), QStringLiteral("why"));
    EXPECT_EQ(text(ModifierEventsError::unreachable()),
              QStringLiteral("The desktop does not answer, so no key can be watched. Start Tulvane again."));
}

} // namespace

} // namespace tulvane
