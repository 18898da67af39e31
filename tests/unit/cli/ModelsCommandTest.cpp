#include <app/cli/ModelsCommand.h>
#include <app/cli/ModelsOutput.h>
#include <models/ModelManager.h>
#include <platform/fake/FakeBackgroundTransfers.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

using Answer = FakeBackgroundTransfers::Answer;

const QByteArray goodBody = QByteArray::fromHex("6c6d6767") + QByteArray(996, 'x');

struct Outcome {
    int status = -1;
    QString out;
    QString err;

    [[nodiscard]] QJsonDocument json() const { return QJsonDocument::fromJson(out.toUtf8()); }
};

WhisperModel tiny(const QString& id)
{
    WhisperModel model = WhisperModel::fallback();
    model.id = id;
    model.displayName = id.toUpper();
    model.repo = u"somebody/" + id;
    model.approximateSizeBytes = goodBody.size();
    return model;
}

class ModelsCommand : public ::testing::Test {
protected:
    ModelsCommand()
        : m_manager({.folders = {m_scratch.file(QStringLiteral("Models")), m_scratch.path()},
                     .hub = m_hub,
                     .catalogue = {m_one, m_two}},
                    m_transfers)
    {
    }
    Outcome run(const QString& words)
    {
        Outcome outcome;
        QBuffer in;
        QTextStream out(&outcome.out);
        QTextStream err(&outcome.err);
        Console console{.in = in, .out = out, .err = err, .outIsTerminal = m_isTerminal};
        const ModelsContext context{m_manager, m_two.id, m_onInterrupt};
        outcome.status = runModels(words.split(u' ', Qt::SkipEmptyParts), context, console);
        out.flush();
        err.flush();
        return outcome;
    }
    void serve(const QList<Answer>& answers) { m_transfers.script(m_one.downloadURL(m_hub), answers); }
    [[nodiscard]] QString place() const { return m_manager.fileURL(m_one); }
    void install() const
    {
        QFile file(place());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(goodBody);
    }

    test::ScratchFolder m_scratch;
    QUrl m_hub{QStringLiteral("https://hub.example/")};
    WhisperModel m_one = tiny(QStringLiteral("one"));
    WhisperModel m_two = tiny(QStringLiteral("two"));
    FakeBackgroundTransfers m_transfers;
    ModelManager m_manager;
    bool m_isTerminal = false;
    std::function<void(std::function<void()>)> m_onInterrupt;
};

TEST_F(ModelsCommand, ListTellsOfEachModelInOneLine)
{
    install();
    m_manager.refreshStates();
    const Outcome outcome = run(QStringLiteral("list"));
    EXPECT_EQ(outcome.status, ExitStatus::done);
    EXPECT_EQ(outcome.out, QStringLiteral("  one  ready             1 KB     ONE\n"
                                          "* two  not downloaded    1 KB     TWO\n"));
    EXPECT_TRUE(outcome.err.isEmpty());
}

TEST_F(ModelsCommand, ListAsJson)
{
    install();
    m_manager.refreshStates();
    const QJsonArray array = run(QStringLiteral("list --json")).json().array();
    ASSERT_EQ(array.size(), 2);
    EXPECT_EQ(array.at(0).toObject(), (QJsonObject{{QStringLiteral("id"), QStringLiteral("one")},
                                                   {QStringLiteral("state"), QStringLiteral("ready")},
                                                   {QStringLiteral("fraction"), 1},
                                                   {QStringLiteral("path"), place()},
                                                   {QStringLiteral("selected"), false}}));
    EXPECT_EQ(array.at(1).toObject().value(u"state"), QStringLiteral("notDownloaded"));
    EXPECT_EQ(array.at(1).toObject().value(u"fraction"), 0);
    EXPECT_EQ(array.at(1).toObject().value(u"selected"), true);
}

TEST_F(ModelsCommand, ListTellsHowFarADownloadIs)
{
    serve({{.body = goodBody, .cutAfter = 257, .hold = true}});
    m_manager.download(m_one);
    ASSERT_TRUE(test::waitUntil([&] { return m_manager.state(m_one.id).fraction() > 0; }));
    EXPECT_TRUE(run(QStringLiteral("list")).out.startsWith(QStringLiteral("  one  downloading 25 % ")));
    EXPECT_EQ(run(QStringLiteral("list --json")).json().array().at(0).toObject().value(u"fraction"), 0.257);
}

TEST_F(ModelsCommand, PathIsTheModelsPlaceWhetherOrNotItIsThere)
{
    EXPECT_EQ(run(QStringLiteral("path one")).out, place() + u'\n');
    EXPECT_EQ(run(QStringLiteral("path one --json")).json().object().value(u"path"), place());
}

TEST_F(ModelsCommand, DownloadEndsWithThePlace)
{
    serve({{.body = goodBody}});
    const Outcome outcome = run(QStringLiteral("download one"));
    EXPECT_EQ(outcome.status, ExitStatus::done);
    EXPECT_EQ(outcome.out, place() + u'\n');
    EXPECT_TRUE(outcome.err.isEmpty());
    EXPECT_TRUE(QFile::exists(place()));
}

TEST_F(ModelsCommand, DownloadShowsABarOnATerminalOnly)
{
    m_isTerminal = true;
    serve({{.body = goodBody}});
    const QString out = run(QStringLiteral("download one")).out;
    EXPECT_TRUE(out.contains(QStringLiteral("[##############################] 100 %  1 KB of 1 KB")))
        << qPrintable(out);
    EXPECT_TRUE(out.contains(QStringLiteral("\rVerifying…")));
    EXPECT_TRUE(out.endsWith(u'\n' + place() + u'\n'));
}

TEST_F(ModelsCommand, DownloadAsJsonShowsNoBar)
{
    m_isTerminal = true;
    serve({{.body = goodBody}});
    const Outcome outcome = run(QStringLiteral("download one --json"));
    EXPECT_EQ(outcome.json().object().value(u"state"), QStringLiteral("ready"));
    EXPECT_FALSE(outcome.out.contains(u'\r'));
}

TEST_F(ModelsCommand, DownloadOfWhatIsThereIsDoneAtOnce)
{
    install();
    m_manager.refreshStates();
    EXPECT_EQ(run(QStringLiteral("download one")).out, place() + u'\n');
    EXPECT_TRUE(m_transfers.started.isEmpty());
}

TEST_F(ModelsCommand, AFailedDownloadTellsWhy)
{
    serve({{.status = 404, .body = "<html>"}});
    const Outcome outcome = run(QStringLiteral("download one"));
    EXPECT_EQ(outcome.status, ExitStatus::failed);
    EXPECT_EQ(outcome.err, QStringLiteral("tulvane: The server responded with HTTP 404.\n"));
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST_F(ModelsCommand, AnInterruptedDownloadIsCancelled)
{
    serve({{.body = goodBody, .cutAfter = 100, .hold = true}, {.body = goodBody}});
    m_onInterrupt = [this](const std::function<void()>& cancel) {
        QObject::connect(&m_manager, &ModelManager::stateChanged, &m_manager,
                         [cancel](const QString&, const ModelState& state) {
                             if (state.fraction() > 0)
                                 cancel();
                         });
    };
    const Outcome outcome = run(QStringLiteral("download one"));
    EXPECT_EQ(outcome.status, ExitStatus::failed);
    EXPECT_EQ(outcome.err, QStringLiteral("tulvane: The download was cancelled.\n"));
    m_onInterrupt = {};
    QObject::disconnect(&m_manager, &ModelManager::stateChanged, &m_manager, nullptr);
    EXPECT_EQ(run(QStringLiteral("download one")).status, ExitStatus::done);
}

TEST_F(ModelsCommand, CancelEndsARunningDownload)
{
    serve({{.body = goodBody, .cutAfter = 100, .hold = true}});
    m_manager.download(m_one);
    ASSERT_TRUE(test::waitUntil([&] { return m_manager.state(m_one.id).fraction() > 0; }));
    EXPECT_EQ(run(QStringLiteral("cancel one")).status, ExitStatus::done);
    EXPECT_EQ(m_manager.state(m_one.id), ModelState::notDownloaded());
    const Outcome again = run(QStringLiteral("cancel one"));
    EXPECT_EQ(again.status, ExitStatus::failed);
    EXPECT_EQ(again.err, QStringLiteral("tulvane: “one” is not being downloaded.\n"));
}

TEST_F(ModelsCommand, DeleteRemovesTheFile)
{
    install();
    EXPECT_EQ(run(QStringLiteral("delete one --json")).json().object().value(u"state"),
              QStringLiteral("notDownloaded"));
    EXPECT_FALSE(QFile::exists(place()));
    const Outcome again = run(QStringLiteral("delete one"));
    EXPECT_EQ(again.status, ExitStatus::done);
    EXPECT_TRUE(again.out.isEmpty());
}

TEST_F(ModelsCommand, VerifyChecksAnyFileAgainstAnEntry)
{
    const QString good = m_scratch.write(QStringLiteral("good"), goodBody);
    const QString bad = m_scratch.write(QStringLiteral("bad"), "<html>");
    const Outcome sound = run(u"verify one " + good);
    EXPECT_EQ(sound.status, ExitStatus::done);
    EXPECT_EQ(sound.out, good + u": a sound file of one\n");
    const Outcome broken = run(u"verify one " + bad);
    EXPECT_EQ(broken.status, ExitStatus::failed);
    EXPECT_TRUE(broken.out.isEmpty());
    EXPECT_EQ(broken.err, QStringLiteral("tulvane: The downloaded file is not a ggml model. The Hugging Face "
                                         "repo may not provide this file.\n"));
    EXPECT_EQ(run(u"verify one --json " + good).json().object().value(u"sound"), true);
    const Outcome brokenJson = run(u"verify one --json " + bad);
    EXPECT_EQ(brokenJson.json().object().value(u"sound"), false);
    EXPECT_FALSE(brokenJson.json().object().value(u"problem").toString().isEmpty());
    EXPECT_EQ(brokenJson.status, ExitStatus::failed);
}

TEST_F(ModelsCommand, AnUnknownModelIsAFailure)
{
    for (const char* const words :
         {"path three", "download ONE", "cancel three", "delete three", "verify x y"}) {
        const Outcome outcome = run(QString::fromLatin1(words));
        EXPECT_EQ(outcome.status, ExitStatus::failed) << words;
        EXPECT_TRUE(outcome.err.startsWith(QStringLiteral("tulvane: There is no model “"))) << words;
    }
}

TEST_F(ModelsCommand, WrongWordsAreTold)
{
    for (const char* const words :
         {"", "show", "path", "verify one", "list one", "path one two", "verify one a b", "list --loud"}) {
        const Outcome outcome = run(QString::fromLatin1(words));
        EXPECT_EQ(outcome.status, ExitStatus::wrongUsage) << words;
        EXPECT_TRUE(outcome.out.isEmpty()) << words;
        EXPECT_TRUE(outcome.err.startsWith(QStringLiteral("tulvane models: "))) << words;
        EXPECT_EQ(outcome.err.count(u'\n'), 1) << words;
    }
    EXPECT_EQ(run(QStringLiteral("--help")).status, ExitStatus::done);
}

TEST(DownloadBar, TellsTheSpeedOfThisTryOnceItMeansSomething)
{
    const ModelState half = ModelState::downloading(0.5);
    EXPECT_EQ(DownloadBar::line(half, 539'000'000, 0.4, 400),
              QStringLiteral("[###############---------------]  50 %  269.5 MB of 539 MB"));
    EXPECT_EQ(DownloadBar::line(half, 539'000'000, 0.4, 10'000),
              QStringLiteral("[###############---------------]  50 %  269.5 MB of 539 MB  5.4 MB/s"));
    EXPECT_EQ(DownloadBar::line(ModelState::downloading(0), 539'000'000, -1, 0),
              QStringLiteral("[------------------------------]   0 %  Zero KB of 539 MB"));
    EXPECT_EQ(DownloadBar::line(ModelState::verifying(), 539'000'000, 0, 0), QStringLiteral("Verifying…"));
}

} // namespace
} // namespace tulvane::cli
