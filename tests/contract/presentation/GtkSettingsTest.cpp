#include <platform/linux/desktop/shell/GtkSettings.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class GtkSettingsTest : public testing::Test {
protected:
    GtkSettingsTest()
    {
        for (const char* folder : {"gtk-3.0", "gtk-4.0"})
            QDir(m_folder.path()).mkdir(QString::fromLatin1(folder));
    }
    void write(int version, const QByteArray& lines) const
    {
        m_folder.write(QStringLiteral("gtk-%1.0/settings.ini").arg(version), "[Settings]\n" + lines);
    }
    [[nodiscard]] GtkSettings make() const { return GtkSettings(m_folder.path()); }
    ScratchFolder m_folder;
};

TEST_F(GtkSettingsTest, WithoutFilesNothingIsKnown)
{
    EXPECT_EQ(make().appearance(), std::nullopt);
    EXPECT_EQ(make().reducedMotion(), std::nullopt);
    EXPECT_EQ(GtkSettings(QStringLiteral("/nowhere")).appearance(), std::nullopt);
}

TEST_F(GtkSettingsTest, KnowsTheWaysOfSayingDark)
{
    for (const char* lines :
         {"gtk-application-prefer-dark-theme=1\n", "gtk-application-prefer-dark-theme=true\n",
          "gtk-application-prefer-dark-theme = TRUE\ngtk-theme-name=Adwaita\n",
          "gtk-theme-name=Adwaita-dark\n", "gtk-theme-name=Greybird-Dark\n",
          "gtk-application-prefer-dark-theme=0\ngtk-theme-name=Yaru-dark\n"}) {
        write(3, lines);
        EXPECT_EQ(make().appearance(), Appearance::dark) << lines;
    }
    for (const char* lines :
         {"gtk-application-prefer-dark-theme=0\n", "gtk-theme-name=Adwaita\n", "gtk-theme-name=Darkness\n"}) {
        write(3, lines);
        EXPECT_EQ(make().appearance(), Appearance::light) << lines;
    }
    write(3, "gtk-font-name=Inter 10\n");
    EXPECT_EQ(make().appearance(), std::nullopt);
}

TEST_F(GtkSettingsTest, TheNewerFileGoesFirstAndTheOlderOneFillsItUp)
{
    write(3, "gtk-application-prefer-dark-theme=1\ngtk-enable-animations=0\n");
    write(4, "gtk-application-prefer-dark-theme=0\n");
    EXPECT_EQ(make().appearance(), Appearance::light);
    EXPECT_EQ(make().reducedMotion(), true);
    write(4, "gtk-enable-animations=true\n");
    EXPECT_EQ(make().appearance(), Appearance::dark);
    EXPECT_EQ(make().reducedMotion(), false);
}

TEST_F(GtkSettingsTest, FollowsAFileThatComesChangesAndIsReplaced)
{
    const GtkSettings settings(m_folder.path());
    int changes = 0;
    QObject::connect(&settings, &GtkSettings::changed, &settings, [&] { ++changes; });
    write(3, "gtk-application-prefer-dark-theme=1\n");
    EXPECT_TRUE(waitUntil([&] { return settings.appearance() == Appearance::dark; }));
    // As settings programs do it: a new file takes the old one's name.
    for (int i = 0; i < 3; ++i) {
        const Appearance wanted = i % 2 == 0 ? Appearance::light : Appearance::dark;
        m_folder.write(QStringLiteral("new"), QByteArray("[Settings]\ngtk-application-prefer-dark-theme=") +
                                                  (wanted == Appearance::dark ? "1\n" : "0\n"));
        ASSERT_EQ(
            std::rename(m_folder.file(QStringLiteral("new")).toLocal8Bit().constData(),
                        m_folder.file(QStringLiteral("gtk-3.0/settings.ini")).toLocal8Bit().constData()),
            0);
        EXPECT_TRUE(waitUntil([&] { return settings.appearance() == wanted; }));
    }
    EXPECT_EQ(changes, 4);
}

} // namespace

} // namespace tulvane::test
