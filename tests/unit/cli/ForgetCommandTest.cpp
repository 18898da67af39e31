#include <app/cli/ForgetCommand.h>
#include <support/ScratchFolder.h>

#include <QBuffer>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class ForgetCommandTest : public ::testing::Test {
protected:
    struct Run {
        int status = -1;
        QString out;
        QString err;
    };

    Run run(const QStringList& arguments, const QByteArray& answer = {})
    {
        Run run;
        QBuffer in;
        in.setData(answer);
        in.open(QIODevice::ReadOnly);
        QTextStream out(&run.out);
        QTextStream err(&run.err);
        cli::Console console{.in = in, .out = out, .err = err};
        run.status = cli::runForget(
            arguments, {.traces = traces(), .isProgramRunning = [this] { return m_runs; }}, console);
        return run;
    }

    [[nodiscard]] QStringList traces() const
    {
        return {path("config/settings.json*"), path("data"), path("config/autostart.desktop")};
    }
    [[nodiscard]] QString path(const char* name) const { return m_folder.file(QString::fromLatin1(name)); }
    [[nodiscard]] bool exists(const char* name) const { return QFile::exists(path(name)); }

    void make(const char* name)
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    void SetUp() override
    {
        for (const char* name :
             {"config/settings.json", "config/settings.json.lock", "config/settings.json.damaged-1",
              "config/other.json", "data/Models/one.bin", "data/statistics.json"})
            make(name);
    }

    ScratchFolder m_folder;
    bool m_runs = false;
};

const QStringList all{QStringLiteral("--all")};

TEST_F(ForgetCommandTest, RemovesEveryTraceAndNothingBesideIt)
{
    const Run run = this->run({QStringLiteral("--all"), QStringLiteral("--yes")});

    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    for (const char* gone :
         {"config/settings.json", "config/settings.json.lock", "config/settings.json.damaged-1", "data"})
        EXPECT_FALSE(exists(gone)) << gone;
    EXPECT_TRUE(exists("config/other.json"));
    EXPECT_TRUE(run.out.contains(path("data"))) << run.out.toStdString();
}

TEST_F(ForgetCommandTest, AsksFirstAndTakesOnlyAYesForOne)
{
    for (const QByteArray& answer :
         {QByteArray("n\n"), QByteArray("\n"), QByteArray(), QByteArray("yesterday\n")}) {
        const Run run = this->run(all, answer);
        EXPECT_EQ(run.status, 1);
        EXPECT_TRUE(run.err.contains(QStringLiteral("Nothing was removed."))) << run.err.toStdString();
        EXPECT_TRUE(exists("data/Models/one.bin"));
    }
    EXPECT_EQ(this->run(all, "y\n").status, 0);
    EXPECT_FALSE(exists("data"));
}

TEST_F(ForgetCommandTest, ShowsWhatWillGoBeforeItAsks)
{
    const Run run = this->run(all, "n\n");
    EXPECT_LT(run.out.indexOf(path("config/settings.json.lock")), run.out.indexOf(QStringLiteral("[y/N]")));
}

TEST_F(ForgetCommandTest, TouchesNothingWhileTheProgramRuns)
{
    m_runs = true;
    const Run run = this->run({QStringLiteral("--all"), QStringLiteral("--yes")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Quit it first"))) << run.err.toStdString();
    EXPECT_TRUE(exists("config/settings.json"));
}

TEST_F(ForgetCommandTest, WantsToBeToldWhatToForget)
{
    EXPECT_EQ(this->run({}).status, 2);
    EXPECT_TRUE(exists("data"));
}

TEST_F(ForgetCommandTest, RemovesALinkAndNotWhatItPointsTo)
{
    make("elsewhere/precious.bin");
    ASSERT_TRUE(QDir(path("data")).removeRecursively());
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("data")));
    EXPECT_EQ(this->run({QStringLiteral("--all"), QStringLiteral("--yes")}).status, 0);
    EXPECT_FALSE(QFileInfo(path("data")).isSymLink());
    EXPECT_TRUE(exists("elsewhere/precious.bin"));
}

TEST_F(ForgetCommandTest, SaysSoWhereThereIsNothing)
{
    ASSERT_EQ(this->run({QStringLiteral("--all"), QStringLiteral("--yes")}).status, 0);
    const Run run = this->run(all);
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out.contains(QStringLiteral("nothing to remove"))) << run.out.toStdString();
}

} // namespace

} // namespace tulvane::test
