#include "Environment.h"

#include <platform/linux/evdev/KeyboardAccess.h>
#include <platform/linux/session/Session.h>
#include <support/Await.h>

#include <gtest/gtest.h>

namespace tulvane::test {

TEST(Session, GoesByWhatTheSessionSaysAndByWaylandsDisplay)
{
    EXPECT_EQ(sessionOf(environment({{"DISPLAY", ":0"}})).kind, SessionKind::x11);
    EXPECT_EQ(sessionOf(environment({{"XDG_SESSION_TYPE", "wayland"}, {"DISPLAY", ":0"}})).kind,
              SessionKind::wayland);
    const auto nested =
        environment({{"XDG_SESSION_TYPE", "x11"}, {"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}});
    EXPECT_EQ(sessionOf(nested).kind, SessionKind::wayland);
    EXPECT_EQ(sessionOf(environment({{"XDG_SESSION_TYPE", "tty"}})).kind, SessionKind::none);
    EXPECT_EQ(sessionOf(environment({{"WAYLAND_DISPLAY", ""}, {"DISPLAY", ""}})).kind, SessionKind::none);
}

TEST(Session, HasTheNameThatTheDoctorSays)
{
    EXPECT_EQ(sessionOf(environment({{"DISPLAY", ":0"}})).name, u"X11"_qs);
    EXPECT_EQ(sessionOf(environment({{"WAYLAND_DISPLAY", "wayland-0"}})).name, u"Wayland"_qs);
    EXPECT_EQ(sessionOf(environment({})).name, u"none"_qs);
}

TEST(Session, ReachesTheKeysOnX11Alone)
{
    EXPECT_EQ(sessionOf(environment({{"DISPLAY", ":0"}})).keyObstacles, nullptr);
    EXPECT_NE(sessionOf(environment({{"WAYLAND_DISPLAY", "wayland-0"}})).keyObstacles, nullptr);
    EXPECT_NE(sessionOf(environment({})).keyObstacles, nullptr);
}

TEST(NullPrivacyPermissions, InAWaylandSessionTheXServersAnswersMeanNothing)
{
    const auto session = environment({{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}});
    const auto wayland = sessionOf(session).permissions(session, {});
    EXPECT_FALSE(wayland->accessibility());
    EXPECT_EQ(wayland->obstacle(Permission::accessibility).reason,
              u"Pasting into other programs is not supported in a Wayland session yet."_qs);
    EXPECT_EQ(wayland->obstacle(Permission::accessibility).remedy,
              u"The text is left on the clipboard: paste it yourself."_qs);
    // The keyboards themselves are all that tells of a key, where the system lets this user read them.
    EXPECT_EQ(wayland->inputMonitoring(), keyboardAccess() == KeyboardAccess::granted);
    EXPECT_EQ(wayland->obstacle(Permission::inputMonitoring), obstacleOf(keyboardAccess()));
}

TEST(NullPrivacyPermissions, WithoutADisplayNothingButTheMicrophoneWorks)
{
    const auto none = sessionOf(environment({})).permissions(environment({}), {});
    for (const Permission permission : {Permission::accessibility, Permission::inputMonitoring}) {
        EXPECT_EQ(none->obstacle(permission).reason, u"No X display could be reached."_qs);
        EXPECT_EQ(none->obstacle(permission).remedy,
                  u"Start Tulvane from your desktop session, where DISPLAY is set."_qs);
    }
    EXPECT_EQ(none->microphone(), MicrophoneAccess::authorized);
    EXPECT_TRUE(await(none->requestMicrophone()));
    EXPECT_EQ(none->obstacle(Permission::microphone), Obstacle());
}

TEST(X11Session, ADisplayThatDoesNotAnswerPermitsNothing)
{
    const auto session = environment({{"DISPLAY", ":64999"}});
    const auto permissions = sessionOf(session).permissions(session, {});
    EXPECT_FALSE(permissions->accessibility());
    EXPECT_EQ(permissions->obstacle(Permission::accessibility).reason, u"No X display could be reached."_qs);
}

} // namespace tulvane::test
