#include <ports/KeyModifiers.h>
#include <platform/linux/session/KeyServices.h>
#include <support/VirtualDesktop.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

QProcessEnvironment environment(std::initializer_list<std::pair<const char*, const char*>> variables)
{
    QProcessEnvironment result;
    for (const auto& [name, value] : variables)
        result.insert(QString::fromUtf8(name), QString::fromUtf8(value));
    return result;
}

TEST(KeyServices, OnX11BothSourcesWork)
{
    const test::VirtualDesktop desktop;
    const KeyServices services = makeKeyServices(desktop.environment());
    EXPECT_TRUE(services.hotkeys->support());
    EXPECT_TRUE(services.modifierEvents->createTap(61, [](const ModifierEvent&) {}));
}

TEST(KeyServices, OnWaylandBothSayWhyNotAndWhatToDo)
{
    const QString reason = QStringLiteral(
        "Hotkeys are not supported in a Wayland session yet. Bind the command “tulvane toggle” to a "
        "key in the desktop's own keyboard settings.");
    for (const auto& session : {environment({{"XDG_SESSION_TYPE", "wayland"}, {"DISPLAY", ":0"}}),
                                environment({{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}})}) {
        const KeyServices services = makeKeyServices(session);
        EXPECT_EQ(services.hotkeys->support().error(), HotkeyError::unsupported(reason));
        EXPECT_EQ(services.hotkeys->registerHotkey({1, 1}, {49, carbon::option}).error(),
                  HotkeyError::unsupported(reason));
        EXPECT_EQ(services.modifierEvents->createTap(61, [](const ModifierEvent&) {}).error(),
                  ModifierEventsError::unsupported(reason));
    }
}

TEST(KeyServices, WithoutADesktopBothSaySo)
{
    const KeyServices services = makeKeyServices(environment({{"XDG_SESSION_TYPE", "tty"}}));
    EXPECT_EQ(
        services.hotkeys->support().error().description(),
        QStringLiteral("There is no desktop here whose keys could be heard. Start Tulvane from a desktop "
                       "session."));
    EXPECT_FALSE(services.modifierEvents->createTap(61, [](const ModifierEvent&) {}));
}

TEST(KeyServices, ADisplayThatDoesNotAnswerIsSaidToBeSo)
{
    const KeyServices services = makeKeyServices(environment({{"DISPLAY", ":64999"}}));
    EXPECT_EQ(services.hotkeys->support().error(), HotkeyError::unreachable());
    EXPECT_EQ(services.modifierEvents->createTap(61, [](const ModifierEvent&) {}).error(),
              ModifierEventsError::unreachable());
}

} // namespace

} // namespace tulvane
