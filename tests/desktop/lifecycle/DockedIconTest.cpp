#include "LifeCycleDesktop.h"

#include <support/Await.h>

#include <QRect>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// An X11 tray into which icons are docked.
class DockedIcon : public testing::Test {
protected:
    QProcess& openTray()
    {
        return here.desktop.start(QStringLiteral("trayer"),
                                  {QStringLiteral("--edge"), QStringLiteral("bottom"),
                                   QStringLiteral("--align"), QStringLiteral("right"),
                                   QStringLiteral("--widthtype"), QStringLiteral("request"),
                                   QStringLiteral("--height"), QStringLiteral("24")});
    }
    /// Where the program's mapped windows are that its user would not call windows.
    QList<QRect> places() const
    {
        QList<QRect> list;
        const QString found = here.xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                            QStringLiteral("--class"), QStringLiteral("tulvane"),
                                            QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"),
                                            QStringLiteral("%@")});
        QHash<QString, int> numbers;
        for (const QString& line : found.split(u'\n', Qt::SkipEmptyParts)) {
            numbers.insert(line.section(u'=', 0, 0), line.section(u'=', 1).toInt());
            if (line.startsWith(QStringLiteral("SCREEN")))
                list.append(QRect(numbers.value(QStringLiteral("X")), numbers.value(QStringLiteral("Y")),
                                  numbers.value(QStringLiteral("WIDTH")),
                                  numbers.value(QStringLiteral("HEIGHT"))));
        }
        return list;
    }
    /// The icon's place, once it is docked at the lower edge.
    bool waitForIcon()
    {
        return waitUntil([this] {
            for (const QRect& place : places()) {
                if (place.height() <= 24 && place.top() > 700)
                    icon = place;
            }
            return icon.isValid();
        });
    }
    /// The menu's place, once the click has opened it.
    bool waitForMenu()
    {
        return waitUntil([this] {
            for (const QRect& place : places()) {
                if (place.height() > 100)
                    menu = place;
            }
            return menu.isValid();
        });
    }
    void click(int button) const
    {
        static_cast<void>(here.xdotool({QStringLiteral("mousemove"), QString::number(icon.center().x()),
                                        QString::number(icon.center().y()), QStringLiteral("click"),
                                        QString::number(button)}));
    }

    LifeCycleDesktop here;
    QRect icon;
    QRect menu;
};

} // namespace

TEST_F(DockedIcon, EitherButtonOpensTheMenuOnTheScreen)
{
    openTray();
    here.setUp();
    here.launch();
    ASSERT_TRUE(waitForIcon());
    for (const int button : {1, 3}) {
        menu = {};
        click(button);
        ASSERT_TRUE(waitForMenu()) << button;
        EXPECT_TRUE(QRect(0, 0, 1280, 800).contains(menu));
        static_cast<void>(here.xdotool({QStringLiteral("key"), QStringLiteral("Escape")}));
        EXPECT_TRUE(waitUntil([this] { return places().size() == 1; }));
    }
}

TEST_F(DockedIcon, ALineOfTheMenuDoesWhatItSays)
{
    openTray();
    here.setUp();
    here.launch();
    ASSERT_TRUE(waitForIcon());
    click(1);
    ASSERT_TRUE(waitForMenu());
    static_cast<void>(
        here.xdotool({QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Return")}));
    EXPECT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    menu = {};
    click(1);
    ASSERT_TRUE(waitForMenu());
    static_cast<void>(here.xdotool({QStringLiteral("key"), QStringLiteral("Up"), QStringLiteral("Return")}));
    EXPECT_TRUE(waitUntil([this] { return here.program().state() == QProcess::NotRunning; }));
    EXPECT_EQ(here.program().exitCode(), 0);
}

TEST_F(DockedIcon, ATrayThatComesLaterIsUsed)
{
    here.setUp();
    here.launch();
    openTray();
    EXPECT_TRUE(waitForIcon());
}

TEST_F(DockedIcon, ATrayMayComeBack)
{
    QProcess& tray = openTray();
    here.setUp();
    here.launch();
    ASSERT_TRUE(waitForIcon());
    tray.kill();
    tray.waitForFinished();
    EXPECT_TRUE(here.answers());
    ASSERT_TRUE(waitUntil([this] { return places().isEmpty(); }));
    icon = {};
    openTray();
    EXPECT_TRUE(waitForIcon());
}

TEST_F(DockedIcon, ThePageThatSpeaksOfTheIconFollowsTheTray)
{
    const QString promise = QStringLiteral(
        "System tray only. Use the microphone icon in the tray to reach this window and quit.");
    const QString truth = QStringLiteral(
        "This desktop shows no icon for Tulvane. Start it again to reach this window; you can quit below.");
    here.setUp();
    static_cast<void>(here.tulvane({QStringLiteral("settings"), QStringLiteral("set"),
                                    QStringLiteral("showInDock"), QStringLiteral("false")}));
    here.launch({QStringLiteral("--page"), QStringLiteral("settings")});
    static_cast<void>(here.focus(QStringLiteral("Show in task bar"))); // which scrolls there
    EXPECT_TRUE(here.shows(truth));
    QProcess& tray = openTray();
    EXPECT_TRUE(here.shows(promise));
    tray.kill();
    tray.waitForFinished();
    EXPECT_TRUE(here.shows(truth));
}

} // namespace tulvane::test
