#include "DownloadRig.h"

#include <support/Await.h>
#include <support/Soak.h>

namespace tulvane {
namespace {

using namespace std::chrono_literals;
using test::DownloadRig;
using test::randomCut;
using test::TransferKind;
using test::waitUntil;
using Kind = ModelState::Kind;

QJsonObject fault(const char* name, const QJsonValue& value = true)
{
    return {{QString::fromLatin1(name), value}};
}

QJsonObject status(int code)
{
    return fault("status", code);
}

QString httpText(int code)
{
    return QStringLiteral("The server responded with HTTP %1.").arg(code);
}

const QString lost = QStringLiteral("The connection was lost.");

class Fault : public ::testing::TestWithParam<TransferKind> {
protected:
    /// Runs a case a few times, with new bytes and cut points each; often in a soak.
    template <class Case>
    void often(const Case& body) const
    {
        const int count = test::soakCount(2, 20);
        for (int i = 0; i < count && !HasFailure(); ++i) {
            SCOPED_TRACE(i);
            DownloadRig rig(GetParam());
            body(rig);
        }
    }
    /// A first try that loses its connection somewhere; returns where.
    static qint64 loseConnection(DownloadRig& rig, DownloadRig::Program& program,
                                 QList<QJsonObject> then = {})
    {
        const qint64 cut = randomCut(rig.body.size());
        rig.script(QList<QJsonObject>{fault("cut", cut)} + then);
        EXPECT_EQ(rig.download(program), ModelState::failed(lost));
        EXPECT_EQ(rig.partialBytes(), cut);
        return cut;
    }
};

TEST_P(Fault, NoneAtAll)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), QList<qint64>{0});
    });
}

TEST_P(Fault, ALostConnectionIsGoneOnFrom)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        const qint64 cut = loseConnection(rig, program);
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, cut}));
    });
}

TEST_P(Fault, ManyLostConnectionsAreGoneOnFrom)
{
    often([](DownloadRig& rig) {
        rig.http.retries = 3;
        rig.http.retryPause = 1ms;
        auto program = rig.launch();
        rig.script({fault("cut", 1000), fault("cut", 50'000), fault("cut", 700'000), fault("cut", 10)});
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, 1000, 51'000, 751'000, 751'010}));
    });
}

TEST_P(Fault, AServerThatNeverProgressesIsGivenUp)
{
    DownloadRig rig(GetParam());
    rig.http.retries = 2;
    rig.http.retryPause = 1ms;
    auto program = rig.launch();
    rig.script({fault("cut", 0), fault("cut", 0), fault("cut", 0), fault("cut", 0)});
    EXPECT_EQ(rig.download(program), ModelState::failed(lost));
    EXPECT_EQ(rig.askedFrom().size(), 3);
    EXPECT_TRUE(rig.files().isEmpty());
}

TEST_P(Fault, AStalledServerIsGivenUpAndGoneOnFrom)
{
    often([](DownloadRig& rig) {
        rig.http.stallTimeout = 300ms;
        auto program = rig.launch();
        const qint64 cut = randomCut(rig.body.size());
        rig.script({fault("stall", cut)});
        EXPECT_EQ(rig.download(program), ModelState::failed(QStringLiteral("The server stopped answering.")));
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, cut}));
    });
}

TEST_P(Fault, AnIgnoredRangeStillGivesTheRightFile)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        const qint64 cut = loseConnection(rig, program, {fault("ignoreRange")});
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, cut}));
    });
}

TEST_P(Fault, AnIgnoredRangeThatIsCutEarlierLosesNothing)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        const qint64 cut = loseConnection(
            rig, program, {QJsonObject{{QStringLiteral("ignoreRange"), true}, {QStringLiteral("cut"), 1}}});
        EXPECT_EQ(rig.download(program), ModelState::failed(lost));
        EXPECT_EQ(rig.partialBytes(), cut);
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, cut, cut}));
    });
}

TEST_P(Fault, AFileThatChangedBetweenTriesStartsOver)
{
    often([](DownloadRig& rig) {
        {
            auto program = rig.launch();
            loseConnection(rig, program);
        }
        rig.publish(test::randomModel(2'500'000));
        auto program = rig.launch();
        rig.expectInstalled(program);
    });
}

TEST_P(Fault, APartOfAChangedFileIsNotTaken)
{
    often([](DownloadRig& rig) {
        {
            auto program = rig.launch();
            loseConnection(rig, program);
        }
        rig.publish(test::randomModel(rig.body.size()));
        rig.script({fault("ignoreCondition")});
        auto program = rig.launch();
        rig.expectInstalled(program);
    });
}

TEST_P(Fault, WithoutAStrongValidatorItStartsOver)
{
    often([](DownloadRig& rig) {
        for (const char* const etag : {"", "W/\"weak\""}) {
            auto program = rig.launch();
            rig.script({QJsonObject{{QStringLiteral("etag"), QLatin1String(etag)},
                                    {QStringLiteral("cut"), randomCut(rig.body.size())}}});
            EXPECT_EQ(rig.download(program), ModelState::failed(lost));
            EXPECT_TRUE(rig.files().isEmpty());
            rig.expectInstalled(program);
            EXPECT_EQ(rig.askedFrom().last(), 0);
            EXPECT_TRUE(program.manager->deleteModel(rig.model));
        }
    });
}

TEST_P(Fault, NoSuchRangeStartsOver)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        const qint64 cut = loseConnection(rig, program, {fault("unsatisfiable")});
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, cut, 0}));
    });
}

TEST_P(Fault, AWrongContentRangeStartsOver)
{
    often([](DownloadRig& rig) {
        for (const char* const wrong : {"start", "total", "none"}) {
            auto program = rig.launch();
            const qint64 cut = loseConnection(rig, program, {fault("range", QLatin1String(wrong))});
            rig.expectInstalled(program);
            EXPECT_EQ(rig.askedFrom().mid(rig.askedFrom().size() - 2), (QList<qint64>{cut, 0}));
            EXPECT_TRUE(program.manager->deleteModel(rig.model));
        }
    });
}

TEST_P(Fault, AnErrorPageIsToldAndKeepsTheBytes)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        rig.script({status(404)});
        EXPECT_EQ(rig.download(program), ModelState::failed(httpText(404)));
        EXPECT_TRUE(waitUntil([&] { return rig.files().isEmpty(); }));
        const qint64 cut = loseConnection(rig, program, {status(404), status(503)});
        EXPECT_EQ(rig.download(program), ModelState::failed(httpText(404)));
        EXPECT_EQ(rig.download(program), ModelState::failed(httpText(503)));
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, 0, cut, cut, cut}));
    });
}

TEST_P(Fault, APageInTheFilesPlaceIsNotInstalledAndKeepsTheBytes)
{
    often([](DownloadRig& rig) {
        const QString notAModel = QStringLiteral(
            "The downloaded file is not a ggml model. The Hugging Face repo may not provide this file.");
        auto program = rig.launch();
        rig.script({status(200)});
        EXPECT_EQ(rig.download(program), ModelState::failed(notAModel));
        EXPECT_TRUE(waitUntil([&] { return rig.files().isEmpty(); }));
        const qint64 cut = loseConnection(rig, program, {status(200)});
        EXPECT_EQ(rig.download(program), ModelState::failed(notAModel));
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, 0, cut, cut}));
    });
}

TEST_P(Fault, AShortMessageInTheFilesPlaceKeepsTheBytes)
{
    often([](DownloadRig& rig) {
        const QString notAModel = QStringLiteral(
            "The downloaded file is not a ggml model. The Hugging Face repo may not provide this file.");
        auto program = rig.launch();
        const auto message = [](const QString& body, bool unsized) {
            QJsonObject answer{{QStringLiteral("status"), 200},
                               {QStringLiteral("body"), body},
                               {QStringLiteral("type"), QStringLiteral("application/json")}};
            if (unsized)
                answer.insert(QStringLiteral("unsized"), true);
            return answer;
        };
        const QString json = QStringLiteral("{\"error\":\"busy\"}");
        const qint64 cut = loseConnection(
            rig, program, {message(json, false), message(json, true), message({}, false), message({}, true)});
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(rig.download(program), ModelState::failed(notAModel)) << i;
            EXPECT_EQ(rig.partialBytes(), cut) << i;
        }
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, cut, cut, cut, cut, cut}));
    });
}

TEST_P(Fault, ABodyWithoutAnEndIsGivenUpAtTheCataloguesSize)
{
    DownloadRig rig(GetParam());
    rig.http.retries = 2;
    const QString unusable = QStringLiteral("The server's answer is not a usable part of the file.");
    {
        auto program = rig.launch();
        rig.script({fault("endless")});
        EXPECT_EQ(rig.download(program), ModelState::failed(unusable));
        EXPECT_TRUE(waitUntil([&] { return rig.files().isEmpty(); })) << qPrintable(rig.files().join(u' '));
    }
    auto program = rig.launch();
    EXPECT_EQ(program.manager->state(rig.model.id), ModelState::notDownloaded());
    EXPECT_EQ(rig.askedFrom().size(), 1);
    rig.expectInstalled(program);
}

TEST_P(Fault, AFileFarLargerThanTheCatalogueSaysIsNotFetched)
{
    DownloadRig rig(GetParam());
    rig.model.approximateSizeBytes = rig.body.size() / 2;
    auto program = rig.launch();
    EXPECT_EQ(rig.download(program),
              ModelState::failed(QStringLiteral("The server's answer is not a usable part of the file.")));
    EXPECT_TRUE(waitUntil([&] { return rig.files().isEmpty(); }));
}

TEST_P(Fault, AFileALittleTooLargeIsToldByItsSize)
{
    DownloadRig rig(GetParam());
    rig.model.approximateSizeBytes = rig.body.size() * 10 / 12;
    auto program = rig.launch();
    EXPECT_TRUE(
        rig.download(program).message().startsWith(QStringLiteral("Downloaded 3 MB, expected about")));
    EXPECT_TRUE(waitUntil([&] { return rig.files().isEmpty(); }));
}

TEST_P(Fault, ARedirectToNoWebAddressIsNoUsableAnswer)
{
    DownloadRig rig(GetParam());
    auto program = rig.launch();
    for (const char* const target : {"file:///etc/passwd", "ftp://127.0.0.1/model", "gopher://127.0.0.1/"}) {
        rig.script({fault("location", QLatin1String(target))});
        EXPECT_EQ(rig.download(program),
                  ModelState::failed(QStringLiteral("The server's answer is not a usable part of the file.")))
            << target;
    }
}

TEST_P(Fault, RedirectsWithoutEndAreGivenUp)
{
    DownloadRig rig(GetParam());
    auto program = rig.launch();
    const QString itself = rig.model.downloadURL(rig.hub).toString();
    rig.script(QList<QJsonObject>(20, fault("location", itself)));
    EXPECT_EQ(rig.download(program),
              ModelState::failed(QStringLiteral("The server's answer is not a usable part of the file.")));
    EXPECT_EQ(rig.askedFrom().size(), 11);
}

TEST_P(Fault, DeletingTakesThePartialFileAlong)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        const qint64 cut = loseConnection(rig, program);
        EXPECT_EQ(program.manager->leftoverBytes(), cut);
        ASSERT_TRUE(program.manager->deleteModel(rig.model));
        EXPECT_TRUE(waitUntil([&] { return rig.files().isEmpty(); })) << qPrintable(rig.files().join(u' '));
        rig.script({fault("rate", 3'000'000)});
        program.manager->download(rig.model);
        ASSERT_TRUE(waitUntil([&] { return program.manager->state(rig.model.id).fraction() > 0.1; }));
        ASSERT_TRUE(program.manager->deleteModel(rig.model));
        EXPECT_TRUE(waitUntil([&] { return rig.files().isEmpty(); })) << qPrintable(rig.files().join(u' '));
        rig.expectInstalled(program);
    });
}

TEST(FaultInProcess, ADownloadThatTakesLongerThanIsAllowedIsGivenUp)
{
    DownloadRig rig(TransferKind::inProcess);
    rig.http.totalTimeout = 300ms;
    auto program = rig.launch();
    rig.script({fault("rate", 1'000'000)});
    EXPECT_EQ(rig.download(program), ModelState::failed(QStringLiteral("The server stopped answering.")));
    EXPECT_GT(rig.partialBytes(), 0);
}

TEST_P(Fault, AnExpiredRedirectIsAskedForAgain)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        const qint64 cut = loseConnection(rig, program, {fault("expired"), fault("redirect")});
        rig.expectInstalled(program);
        EXPECT_EQ(rig.askedFrom(), (QList<qint64>{0, cut, cut, cut, cut}));
    });
}

TEST_P(Fault, ARedirectThatStaysExpiredKeepsTheBytes)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        const qint64 cut = loseConnection(rig, program, {fault("expired"), fault("expired")});
        EXPECT_EQ(rig.download(program), ModelState::failed(httpText(403)));
        EXPECT_EQ(rig.partialBytes(), cut);
        rig.expectInstalled(program);
    });
}

TEST_P(Fault, ACompressedAnswerIsRefused)
{
    often([](DownloadRig& rig) {
        const QString unusable = QStringLiteral("The server's answer is not a usable part of the file.");
        auto program = rig.launch();
        rig.script({fault("gzip")});
        EXPECT_EQ(rig.download(program), ModelState::failed(unusable));
        EXPECT_TRUE(rig.files().isEmpty());
        const qint64 cut = loseConnection(rig, program, {fault("gzip")});
        EXPECT_EQ(rig.download(program), ModelState::failed(unusable));
        EXPECT_EQ(rig.partialBytes(), cut);
        rig.expectInstalled(program);
    });
}

TEST_P(Fault, AnAnswerOfUnknownLengthIsTakenWhole)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        rig.script({fault("chunked")});
        rig.expectInstalled(program);
    });
}

TEST_P(Fault, AChunkedAnswerThatIsCutIsNotTakenForWhole)
{
    often([](DownloadRig& rig) {
        auto program = rig.launch();
        rig.script({QJsonObject{{QStringLiteral("chunked"), true},
                                {QStringLiteral("cut"), randomCut(rig.body.size())}}});
        EXPECT_EQ(rig.download(program), ModelState::failed(lost));
        rig.expectInstalled(program);
    });
}

TEST_P(Fault, NobodyAtTheAddressIsTold)
{
    DownloadRig rig(GetParam());
    auto program = rig.launch();
    rig.script({});
    WhisperModel nowhere = rig.model;
    program.manager.reset();
    ModelManager manager({.folders = rig.folders,
                          .hub = QUrl(QStringLiteral("http://127.0.0.1:9/")),
                          .mode = ModelManager::SessionMode::ordinary,
                          .catalogue = {nowhere}},
                         *program.transfers);
    manager.download(nowhere);
    ASSERT_TRUE(waitUntil([&] { return manager.state(nowhere.id).kind() == Kind::failed; }));
    EXPECT_EQ(manager.state(nowhere.id).message(), QStringLiteral("The server could not be reached."));
    EXPECT_TRUE(rig.files().isEmpty());
}

TEST_P(Fault, TheProxyOfTheEnvironmentIsUsed)
{
    DownloadRig rig(GetParam());
    // The server of the rig is asked for whole addresses then, of a host that there is not.
    qputenv("http_proxy", rig.hub.toEncoded());
    rig.hub = QUrl(QStringLiteral("http://models.invalid/"));
    auto program = rig.launch();
    rig.expectInstalled(program);
    qunsetenv("http_proxy");
    ASSERT_EQ(rig.askedAddresses().size(), 1);
    EXPECT_TRUE(rig.askedAddresses().constFirst().startsWith(QStringLiteral("http://models.invalid/")));
}

TEST_P(Fault, TwoProgramsAtOnceInstallOneFile)
{
    often([](DownloadRig& rig) {
        rig.script({fault("rate", 20'000'000), fault("rate", 20'000'000)});
        auto first = rig.launch();
        auto second = rig.launch();
        first.manager->download(rig.model);
        second.manager->download(rig.model);
        const auto settled = [&](const DownloadRig::Program& program) {
            const Kind kind = program.manager->state(rig.model.id).kind();
            return kind == Kind::ready || kind == Kind::failed;
        };
        ASSERT_TRUE(waitUntil([&] { return settled(first) && settled(second); }));
        // The one that was told that somebody else is at it sees the file come all the same.
        EXPECT_TRUE(waitUntil([&] {
            return first.manager->state(rig.model.id) == ModelState::ready() &&
                   second.manager->state(rig.model.id) == ModelState::ready();
        }));
        rig.expectOnlyTheModel();
    });
}

INSTANTIATE_TEST_SUITE_P(Kinds, Fault, ::testing::Values(TransferKind::inProcess, TransferKind::detached),
                         [](const auto& kind) {
                             return std::string(kind.param == TransferKind::inProcess ? "InProcess"
                                                                                      : "Detached");
                         });

} // namespace
} // namespace tulvane
