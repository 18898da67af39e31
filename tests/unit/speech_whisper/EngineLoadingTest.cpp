#include "EngineFixture.h"

#include <speech/whisper/EngineCore.h>
#include <support/Soak.h>
#include <support/TinyModel.h>

#include <QDir>
#include <QRegularExpression>

#include <array>
#include <span>
namespace tulvane {
namespace {

using test::TinyModel;

class EngineLoading : public test::EngineTest {
protected:
    QString tiny(const QString& name = u"tiny.bin"_qs) { return m_folder.write(name, TinyModel{}.bytes()); }
    void expectNoModelAfterLoading(const QString& file)
    {
        const Loaded loaded = load(file);
        ASSERT_FALSE(loaded.has_value());
        EXPECT_EQ(loaded.error(), EngineError::modelLoadFailed(file));
        EXPECT_EQ(loadedModel(), QString());
        EXPECT_EQ(transcribe(silence(1)).error(), EngineError::noModelLoaded());
    }
};

TEST_F(EngineLoading, beginsWithoutAModel)
{
    EXPECT_EQ(loadedModel(), QString());
    EXPECT_EQ(transcribe(silence(1)).error(), EngineError::noModelLoaded());
}

TEST_F(EngineLoading, loadsAModelAndSaysSo)
{
    const QString file = tiny();
    ASSERT_TRUE(load(file).has_value());
    EXPECT_EQ(loadedModel(), file);
    ASSERT_EQ(milestones().size(), 1);
    EXPECT_TRUE(QRegularExpression(u"^Loaded tiny\\.bin in \\d+\\.\\d\\ds$"_qs)
                    .match(milestones().first())
                    .hasMatch())
        << qPrintable(milestones().first());
}

TEST_F(EngineLoading, loadingTheLoadedFileAgainDoesAndSaysNothing)
{
    const QString file = tiny();
    ASSERT_TRUE(load(file).has_value());
    QFile::remove(file); // would fail if it were read again
    m_log.clear();
    EXPECT_TRUE(load(file).has_value());
    EXPECT_TRUE(m_log.lines().isEmpty());
    EXPECT_TRUE(transcribe(silence(1)).has_value());
}

TEST_F(EngineLoading, freesTheOldModelBeforeItReadsTheNew)
{
    ASSERT_TRUE(load(tiny(u"first.bin"_qs)).has_value());
    ASSERT_TRUE(load(tiny(u"second.bin"_qs)).has_value());
    ASSERT_EQ(milestones().size(), 3);
    EXPECT_TRUE(milestones()[0].startsWith(u"Loaded first.bin in "));
    EXPECT_EQ(milestones()[1], u"Unloaded model");
    EXPECT_TRUE(milestones()[2].startsWith(u"Loaded second.bin in "));
    // The library's first line about the second file stands after the line that says that the old one is
    // gone.
    qsizetype unloaded = -1;
    qsizetype lastLoading = -1;
    const auto lines = m_log.lines();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].text == u"Unloaded model")
            unloaded = i;
        if (lines[i].text.contains(u"loading model"))
            lastLoading = i;
    }
    EXPECT_GT(unloaded, 0);
    EXPECT_GT(lastLoading, unloaded);
}

TEST_F(EngineLoading, aFailedLoadLeavesNoModel)
{
    ASSERT_TRUE(load(tiny()).has_value());
    m_log.clear();
    expectNoModelAfterLoading(m_folder.file(u"missing.bin"_qs));
    EXPECT_EQ(milestones(), QStringList{u"Unloaded model"_qs});

    ASSERT_TRUE(load(tiny()).has_value());
    expectNoModelAfterLoading(m_folder.write(u"corrupt.bin"_qs, TinyModel{}.bytes().chopped(1)));
    expectNoModelAfterLoading(m_folder.path());
    expectNoModelAfterLoading(QString());
}

TEST_F(EngineLoading, saysInTheLogWhyAFileWasRejected)
{
    expectNoModelAfterLoading(m_folder.write(u"page.bin"_qs, "<html>"));
    EXPECT_TRUE(m_log.contains(u"page.bin is damaged or foreign: not a ggml model"_qs));
    expectNoModelAfterLoading(m_folder.path());
    EXPECT_TRUE(m_log.contains(u"not a plain file"_qs));
}

TEST_F(EngineLoading, saysInTheErrorsSecondLineWhyAFileWasRejected)
{
    const QString page = m_folder.write(u"page.bin"_qs, "<html>");
    EXPECT_EQ(load(page).error().description(), u"Could not load the speech model at page.bin.\n"
                                                u"The file is damaged, or no speech model: not a ggml model");
    const QString missing = m_folder.file(u"missing.bin"_qs);
    EXPECT_EQ(load(missing).error().description(), u"Could not load the speech model at missing.bin.\n"
                                                   u"The file cannot be read: No such file or directory");
    m_memory.setAvailable(50'000'000);
    const QString poor = load(tiny()).error().description();
    EXPECT_TRUE(poor.endsWith(u" MB of memory, and 50 MB are available.")) << qPrintable(poor);
    EXPECT_EQ(m_log.texts("whisper", QtCriticalMsg).size(), 3) << "each of them at error level";
}

TEST_F(EngineLoading, aLoadIsAbandonedOnceTheEngineIsClosing)
{
    const std::atomic<bool> closing = true;
    EngineCore core(m_backends, m_memory, closing);
    const Loaded loaded = core.load(demo());
    ASSERT_FALSE(loaded.has_value());
    EXPECT_EQ(loaded.error(), EngineError::modelLoadFailed(demo()));
    EXPECT_TRUE(loaded.error().description().contains(u"the program is ending"))
        << qPrintable(loaded.error().description());
    EXPECT_EQ(core.loadedModel(), QString());
}

TEST_F(EngineLoading, unloadingFreesTheModelAndSaysSoOnce)
{
    unload();
    EXPECT_TRUE(milestones().isEmpty());
    ASSERT_TRUE(load(tiny()).has_value());
    m_log.clear();
    unload();
    unload();
    EXPECT_EQ(milestones(), QStringList{u"Unloaded model"_qs});
    EXPECT_EQ(loadedModel(), QString());
    EXPECT_EQ(transcribe(silence(1)).error(), EngineError::noModelLoaded());
}

TEST_F(EngineLoading, loadsFromAPathOfAnyLengthAndScript)
{
    QString folder = m_folder.path();
    while (folder.toUtf8().size() < 2000)
        folder += u'/' + QString(100, u'å');
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString file = folder + u"/modell med ord.bin"_qs;
    ASSERT_TRUE(QFile::copy(tiny(), file));
    ASSERT_TRUE(load(file).has_value());
    EXPECT_TRUE(milestones().first().startsWith(u"Loaded modell med ord.bin in "));
}

TEST_F(EngineLoading, tooLittleMemoryIsAFailedLoad)
{
    const QString file = tiny();
    m_memory.setAvailable(50'000'000);
    expectNoModelAfterLoading(file);
    EXPECT_TRUE(m_log.contains(u"and 50 MB are available"_qs));
    m_memory.setAvailable(1'000'000'000);
    EXPECT_TRUE(load(file).has_value());
}

TEST_F(EngineLoading, memoryThatCannotBeReservedIsAFailedLoad)
{
    m_memory.refuseReservations();
    expectNoModelAfterLoading(tiny());
}

TEST_F(EngineLoading, theLibrarysOwnLinesGoToTheLog)
{
    ASSERT_TRUE(load(tiny()).has_value());
    const QStringList details = m_log.texts("whisper", QtDebugMsg);
    EXPECT_TRUE(details.contains(u"whisper_model_load: loading model"_qs)) << qPrintable(details.join(u'\n'));
    EXPECT_TRUE(details.join(u'\n').contains(u"use gpu    = 1"_qs));
    EXPECT_TRUE(details.join(u'\n').contains(u"flash attn = 1"_qs));
}

// Every shape and every kind of weights that the check lets pass must be one that the library can run.
class EngineShapes : public test::EngineTest, public ::testing::WithParamInterface<TinyModel> {};

TEST_P(EngineShapes, runsWhatTheCheckAccepts)
{
    ASSERT_TRUE(load(m_folder.write(u"model.bin"_qs, GetParam().bytes())).has_value());
    // Random weights write to the end of the text and try again; each language takes seconds.
    const std::array languages = {"auto", "no", "nn", "en"};
    for (const char* language : std::span(languages).first(static_cast<std::size_t>(test::soakCount(1, 4)))) {
        const auto text = transcribe(silence(1), {.language = QString::fromUtf8(language), .threadCount = 1});
        EXPECT_TRUE(text.has_value()) << language;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Models, EngineShapes,
    ::testing::Values(
        TinyModel{}, TinyModel{.vocabulary = 51864, .words = 50256},
        TinyModel{.vocabulary = 51866, .mels = 128, .words = 51866},
        TinyModel{.audioState = 64,
                  .audioHeads = 8,
                  .audioLayers = 3,
                  .textState = 64,
                  .textHeads = 4,
                  .textLayers = 2},
        TinyModel{.audioState = 40, .textState = 40},
        TinyModel{.audioState = 32, .audioHeads = 2, .audioLayers = 2, .textState = 32, .fileType = 2002},
        TinyModel{.audioState = 32, .textState = 32, .fileType = 2003},
        TinyModel{.audioState = 32, .textState = 32, .fileType = 2007},
        TinyModel{.audioState = 32, .textState = 32, .fileType = 2008},
        TinyModel{.audioState = 32, .textState = 32, .fileType = 2009},
        TinyModel{.audioState = 256, .audioHeads = 4, .textState = 256, .textHeads = 4, .fileType = 2010},
        TinyModel{.audioState = 256, .audioHeads = 4, .textState = 256, .textHeads = 4, .fileType = 2011},
        TinyModel{.audioState = 256, .audioHeads = 4, .textState = 256, .textHeads = 4, .fileType = 2012},
        TinyModel{.audioState = 256, .audioHeads = 4, .textState = 256, .textHeads = 4, .fileType = 2013},
        TinyModel{.audioState = 256, .audioHeads = 4, .textState = 256, .textHeads = 4, .fileType = 2014}));

} // namespace
} // namespace tulvane
