#include <support/Await.h>
#include <support/Paths.h>
#include <support/Signals.h>
#include <support/wayland/WaylandDesktop.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <csignal>

namespace tulvane::test {

namespace {

class WaylandDesktopTest : public testing::TestWithParam<WaylandDesktop::Kind> {};

/// The text of the field, once the program says that it has some.
QString textAfterAChange(QProcess& program)
{
    QByteArray heard;
    const auto hears = [&](const QByteArray& word) {
        heard += program.readAllStandardOutput();
        return heard.contains(word);
    };
    EXPECT_TRUE(waitUntil([&] { return hears("changed"); }));
    program.write("{\"id\": 1, \"do\": \"report\"}\n");
    EXPECT_TRUE(waitUntil([&] { return hears("\"text\""); }));
    const qsizetype start = heard.indexOf("{\"id\": 1");
    return QJsonDocument::fromJson(
               heard.mid(start, heard.indexOf('\n', start) - start))[QStringLiteral("text")]
        .toString();
}

QProcess& startField(WaylandDesktop& desktop)
{
    QProcess& program = desktop.start(
        QStringLiteral("/usr/bin/python3"),
        {sourceFolder() + QStringLiteral("/tests/support/targets/gtk_target.py"), QStringLiteral("view")});
    EXPECT_TRUE(waitUntil([&] { return program.readAllStandardOutput().contains("ready"); }));
    return program;
}

/// Every process whose runtime folder is the desktop's.
int processesOf(const QString& home)
{
    int count = 0;
    const QByteArray mark = "XDG_RUNTIME_DIR=" + home.toUtf8() + "/run";
    for (const QString& name :
         QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[1-9]*")}, QDir::Dirs)) {
        QFile environment(u"/proc/" + name + u"/environ");
        if (environment.open(QIODevice::ReadOnly) && environment.readAll().contains(mark))
            ++count;
    }
    return count;
}

TEST_P(WaylandDesktopTest, AKeyReachesTheFieldInFront)
{
    TULVANE_NEEDS(GetParam());
    WaylandDesktop desktop(GetParam());
    QProcess& field = startField(desktop);
    desktop.press({30});
    EXPECT_EQ(textAfterAChange(field), QStringLiteral("a"));
}

TEST_P(WaylandDesktopTest, ThereIsAPicture)
{
    TULVANE_NEEDS(GetParam());
    WaylandDesktop desktop(GetParam());
    const QString file = desktop.home() + QStringLiteral("/screen.png");
    desktop.picture(file);
    QFile picture(file);
    ASSERT_TRUE(picture.open(QIODevice::ReadOnly));
    EXPECT_TRUE(picture.read(8).startsWith("\x89PNG"));
}

TEST_P(WaylandDesktopTest, NothingIsLeftOfIt)
{
    TULVANE_NEEDS(GetParam());
    WaylandDesktop desktop(GetParam(), {.x11 = true});
    startField(desktop);
    EXPECT_GT(processesOf(desktop.home()), 2);
    desktop.stop();
    EXPECT_EQ(processesOf(desktop.home()), 0);
}

TEST_P(WaylandDesktopTest, NothingIsLeftWhenItsScriptIsKilled)
{
    TULVANE_NEEDS(GetParam());
    WaylandDesktop desktop(GetParam());
    sendSignal(desktop.processId(), SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return processesOf(desktop.home()) == 0; }));
}

std::string nameOf(const testing::TestParamInfo<WaylandDesktop::Kind>& tested)
{
    const std::array<std::string, 4> names{"Sway", "KWin", "ClosedKWin", "Gnome"};
    return names.at(static_cast<std::size_t>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Desktops, WaylandDesktopTest,
                         testing::Values(WaylandDesktop::Kind::sway, WaylandDesktop::Kind::kwin,
                                         WaylandDesktop::Kind::gnome),
                         nameOf);

} // namespace

} // namespace tulvane::test
