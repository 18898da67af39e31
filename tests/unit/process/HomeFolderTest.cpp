#include <ports/HomeFolder.h>

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace tulvane {
namespace {

class HomeFolder : public testing::Test {
protected:
    ~HomeFolder() override { qputenv("HOME", m_before); }

    QByteArray m_before = qgetenv("HOME");
    QByteArray m_user = getpwuid(geteuid())->pw_dir;
};

TEST_F(HomeFolder, IsTheUsersWhereNothingSaysAnother)
{
    qunsetenv("HOME");
    knowHomeFolder();
    EXPECT_EQ(qgetenv("HOME"), m_user);
}

TEST_F(HomeFolder, ThatIsNoAbsolutePathIsNone)
{
    for (const char* const home : {"", "some/folder", "."}) {
        qputenv("HOME", home);
        knowHomeFolder();
        EXPECT_EQ(qgetenv("HOME"), m_user) << home;
    }
}

TEST_F(HomeFolder, IsWhatTheEnvironmentSays)
{
    qputenv("HOME", "/nonexistent");
    knowHomeFolder();
    EXPECT_EQ(qgetenv("HOME"), "/nonexistent");
}

} // namespace
} // namespace tulvane
