#include <platform/linux/session/X11PrivacyPermissions.h>
#include <support/Await.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

namespace tulvane {

namespace {

using Abilities = X11PrivacyPermissions::Abilities;

constexpr Abilities everything{SessionKind::x11, true, true, true};

X11PrivacyPermissions permissions(const Abilities& abilities, bool microphoneDenied = false)
{
    return {abilities, [microphoneDenied] { return microphoneDenied; }};
}

/// Sets environment variables for the length of a test; an empty value takes the variable away.
class Environment final {
public:
    Environment(std::initializer_list<std::pair<const char*, QByteArray>> variables)
    {
        for (const auto& [name, value] : variables) {
            m_before.append({name, qgetenv(name)});
            set(name, value);
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment()
    {
        for (const auto& [name, value] : m_before)
            set(name, value);
    }

private:
    static void set(const char* name, const QByteArray& value)
    {
        if (value.isEmpty())
            qunsetenv(name);
        else
            qputenv(name, value);
    }
    QList<std::pair<const char*, QByteArray>> m_before;
};

} // namespace

TEST(X11PrivacyPermissions, OnAnOrdinaryX11DesktopEverythingIsPermitted)
{
    auto all = permissions(everything);
    EXPECT_EQ(all.microphone(), MicrophoneAccess::authorized);
    EXPECT_TRUE(all.accessibility());
    EXPECT_TRUE(all.inputMonitoring());
    EXPECT_TRUE(test::await(all.requestMicrophone()));
    for (const Permission permission :
         {Permission::microphone, Permission::accessibility, Permission::inputMonitoring})
        EXPECT_EQ(all.obstacle(permission), PermissionObstacle());
}

TEST(X11PrivacyPermissions, TheMicrophoneIsAuthorizedUnlessTheSoundServerRefuses)
{
    auto denied = permissions(everything, true);
    EXPECT_EQ(denied.microphone(), MicrophoneAccess::denied);
    EXPECT_FALSE(test::await(denied.requestMicrophone()));
    EXPECT_EQ(denied.obstacle(Permission::microphone).reason,
              u"The sound server refuses access to the microphone."_qs);
    EXPECT_EQ(denied.obstacle(Permission::microphone).remedy,
              u"Allow Tulvane to record in your desktop's sound or privacy settings."_qs);
    EXPECT_EQ((X11PrivacyPermissions(everything, nullptr).microphone()), MicrophoneAccess::authorized);
}

TEST(X11PrivacyPermissions, AServerWithoutXtestCannotPress)
{
    const auto without = permissions({SessionKind::x11, true, false, true});
    EXPECT_FALSE(without.accessibility());
    EXPECT_TRUE(without.inputMonitoring());
    EXPECT_EQ(without.obstacle(Permission::accessibility).reason,
              u"The X server lacks the XTEST extension, so no keys can be pressed for you."_qs);
    EXPECT_EQ(without.obstacle(Permission::accessibility).remedy,
              u"Start the X server with XTEST. Until then the text is left on the clipboard."_qs);
}

TEST(X11PrivacyPermissions, AServerWithoutXInputCannotWatch)
{
    const auto without = permissions({SessionKind::x11, true, true, false});
    EXPECT_TRUE(without.accessibility());
    EXPECT_FALSE(without.inputMonitoring());
    EXPECT_EQ(without.obstacle(Permission::inputMonitoring).reason,
              u"The X server lacks the XInput 2 extension, so single keys cannot be watched."_qs);
    EXPECT_EQ(without.obstacle(Permission::inputMonitoring).remedy,
              u"Use a key combination as the hotkey."_qs);
}

TEST(X11PrivacyPermissions, InAWaylandSessionTheXServersAnswersMeanNothing)
{
    const auto wayland = permissions({SessionKind::wayland, true, true, true});
    EXPECT_FALSE(wayland.accessibility());
    EXPECT_FALSE(wayland.inputMonitoring());
    EXPECT_EQ(wayland.obstacle(Permission::accessibility).reason,
              u"Pasting into other programs is not supported in a Wayland session yet."_qs);
    EXPECT_EQ(wayland.obstacle(Permission::accessibility).remedy,
              u"The text is left on the clipboard: paste it yourself."_qs);
    EXPECT_EQ(wayland.obstacle(Permission::inputMonitoring).reason,
              u"Hotkeys are not supported in a Wayland session yet."_qs);
    EXPECT_EQ(wayland.obstacle(Permission::inputMonitoring).remedy,
              u"Bind the command “tulvane toggle” to a key in your desktop's keyboard settings."_qs);
}

TEST(X11PrivacyPermissions, WithoutADisplayNothingWorks)
{
    const auto none = permissions({SessionKind::none, false, false, false});
    for (const Permission permission : {Permission::accessibility, Permission::inputMonitoring}) {
        EXPECT_EQ(none.obstacle(permission).reason, u"No X display could be reached."_qs);
        EXPECT_EQ(none.obstacle(permission).remedy,
                  u"Start Tulvane from your desktop session, where DISPLAY is set."_qs);
    }
}

TEST(CurrentSession, GoesByWhatTheSessionSaysAndByWaylandsDisplay)
{
    {
        const Environment plain{{"XDG_SESSION_TYPE", ""}, {"WAYLAND_DISPLAY", ""}, {"DISPLAY", ":0"}};
        EXPECT_EQ(currentSession(), SessionKind::x11);
    }
    {
        const Environment said{{"XDG_SESSION_TYPE", "wayland"}, {"WAYLAND_DISPLAY", ""}, {"DISPLAY", ":0"}};
        EXPECT_EQ(currentSession(), SessionKind::wayland);
    }
    {
        const Environment nested{
            {"XDG_SESSION_TYPE", "x11"}, {"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}};
        EXPECT_EQ(currentSession(), SessionKind::wayland);
    }
    const Environment nothing{{"XDG_SESSION_TYPE", "tty"}, {"WAYLAND_DISPLAY", ""}, {"DISPLAY", ""}};
    EXPECT_EQ(currentSession(), SessionKind::none);
}

} // namespace tulvane
