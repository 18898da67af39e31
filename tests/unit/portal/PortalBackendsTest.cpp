#include <platform/linux/portal/AppScope.h>
#include <platform/linux/portal/PortalBackends.h>
#include <support/ScratchFolder.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

const QString shortcuts = QStringLiteral("GlobalShortcuts");
const QString ours = QStringLiteral("com.dunio.Tulvane");

class PortalBackendsTest : public testing::Test {
protected:
    void write(const QString& file, const QByteArray& text)
    {
        const QString path = folder.path() + QStringLiteral("/xdg-desktop-portal/") + file;
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile opened(path);
        ASSERT_TRUE(opened.open(QIODevice::WriteOnly) && opened.write(text) == text.size());
    }
    [[nodiscard]] bool has(const QString& desktop) const
    {
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), desktop);
        environment.insert(QStringLiteral("XDG_DATA_DIRS"), folder.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/nowhere"));
        environment.insert(QStringLiteral("XDG_CONFIG_DIRS"), QStringLiteral("/nowhere"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/nowhere"));
        return hasPortalBackend(shortcuts, environment);
    }

    ScratchFolder folder;
};

TEST_F(PortalBackendsTest, OnlyTheDesktopsOwnProgramCounts)
{
    EXPECT_FALSE(has(QStringLiteral("KDE")));
    write(QStringLiteral("portals/kde.portal"),
          "[portal]\nDBusName=x\nInterfaces=org.freedesktop.impl.portal.Access;"
          "org.freedesktop.impl.portal.GlobalShortcuts\nUseIn=KDE\n");
    write(QStringLiteral("portals/wlr.portal"),
          "[portal]\nDBusName=y\nInterfaces=org.freedesktop.impl.portal.Screenshot\nUseIn=sway;wlroots\n");
    EXPECT_TRUE(has(QStringLiteral("KDE")));
    EXPECT_TRUE(has(QStringLiteral("ubuntu:kde")));
    EXPECT_FALSE(has(QStringLiteral("sway"))) << "the portal would fall back to KDE's";
    EXPECT_FALSE(has(QString()));
}

TEST_F(PortalBackendsTest, ADesktopMayNameItsPrograms)
{
    write(QStringLiteral("portals/hyprland.portal"),
          "[portal]\nInterfaces=org.freedesktop.impl.portal.GlobalShortcuts\nUseIn=\n");
    EXPECT_FALSE(has(QStringLiteral("Hyprland")));
    write(QStringLiteral("hyprland-portals.conf"), "[preferred]\ndefault=hyprland;gtk\n");
    EXPECT_TRUE(has(QStringLiteral("Hyprland")));
    write(QStringLiteral("hyprland-portals.conf"),
          "[preferred]\ndefault=hyprland\norg.freedesktop.impl.portal.GlobalShortcuts=none\n");
    EXPECT_FALSE(has(QStringLiteral("Hyprland")));
}

TEST(AppScopeTest, AUnitOfOursIsKnownByItsName)
{
    const QString user = QStringLiteral("0::/user.slice/user-1000.slice/user@1000.service/app.slice/");
    EXPECT_TRUE(isUnitOf(ours, user + QStringLiteral("app-com.dunio.Tulvane-4711.scope\n")));
    EXPECT_TRUE(isUnitOf(ours, user + QStringLiteral("app-gnome-com.dunio.Tulvane-4711.scope\n")));
    EXPECT_TRUE(isUnitOf(ours, user + QStringLiteral("app-com.dunio.Tulvane@autostart.service\n")));
    EXPECT_TRUE(isUnitOf(ours, user + QStringLiteral("app-com.dunio.Tulvane.service\n")));
    EXPECT_FALSE(isUnitOf(ours, user + QStringLiteral("app-org.gnome.Terminal-4711.scope\n")));
    EXPECT_FALSE(isUnitOf(ours, user + QStringLiteral("app-com.dunio.TulvaneOther-4711.scope\n")));
    EXPECT_FALSE(isUnitOf(ours, QStringLiteral("0::/\n")));
    EXPECT_FALSE(isUnitOf(ours, QString()));
}

} // namespace

} // namespace tulvane::test
