#include <platform/linux/session/X11PrivacyPermissions.h>
#include <support/Await.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

constexpr X11Abilities everything{true, true, true};

X11PrivacyPermissions permissions(const X11Abilities& abilities, bool microphoneDenied = false)
{
    return {abilities, [microphoneDenied] { return microphoneDenied; }};
}

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
    const auto without = permissions({true, false, true});
    EXPECT_FALSE(without.accessibility());
    EXPECT_TRUE(without.inputMonitoring());
    EXPECT_EQ(without.obstacle(Permission::accessibility).reason,
              u"The X server lacks the XTEST extension, so no keys can be pressed for you."_qs);
    EXPECT_EQ(without.obstacle(Permission::accessibility).remedy,
              u"Start the X server with XTEST. Until then the text is left on the clipboard."_qs);
}

TEST(X11PrivacyPermissions, AServerWithoutXInputCannotWatch)
{
    const auto without = permissions({true, true, false});
    EXPECT_TRUE(without.accessibility());
    EXPECT_FALSE(without.inputMonitoring());
    EXPECT_EQ(without.obstacle(Permission::inputMonitoring).reason,
              u"The X server lacks the XInput 2 extension, so single keys cannot be watched."_qs);
    EXPECT_EQ(without.obstacle(Permission::inputMonitoring).remedy,
              u"Use a key combination as the hotkey."_qs);
}

TEST(X11PrivacyPermissions, WithoutADisplayNothingWorks)
{
    const auto none = permissions({false, false, false});
    for (const Permission permission : {Permission::accessibility, Permission::inputMonitoring}) {
        EXPECT_EQ(none.obstacle(permission).reason, u"No X display could be reached."_qs);
        EXPECT_EQ(none.obstacle(permission).remedy,
                  u"Start Tulvane from your desktop session, where DISPLAY is set."_qs);
    }
}

} // namespace tulvane
