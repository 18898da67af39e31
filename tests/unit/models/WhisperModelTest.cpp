#include <models/WhisperModel.h>

#include <QSet>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

using Variant = WhisperModel::Variant;
using Precision = WhisperModel::Precision;
using Size = WhisperModel::Size;

const QUrl hub(QStringLiteral("https://hub.example/"));

TEST(WhisperModel, TheCatalogueIsTheFiveEntriesInOrder)
{
    const QString small = QStringLiteral("ggml-model-q5_0.bin");
    const QList<WhisperModel> expected{
        {QStringLiteral("nb-whisper-small-q5_0"),
         QStringLiteral("NB-Whisper Small (q5_0)"),
         Variant::standard,
         Precision::q5_0,
         Size::small,
         QStringLiteral("NbAiLab/nb-whisper-small"),
         small,
         175'000'000,
         {}},
        {QStringLiteral("nb-whisper-medium-q5_0"),
         QStringLiteral("NB-Whisper Medium (q5_0)"),
         Variant::standard,
         Precision::q5_0,
         Size::medium,
         QStringLiteral("NbAiLab/nb-whisper-medium"),
         small,
         539'000'000,
         {}},
        {QStringLiteral("nb-whisper-medium-f16"),
         QStringLiteral("NB-Whisper Medium (f16)"),
         Variant::standard,
         Precision::f16,
         Size::medium,
         QStringLiteral("NbAiLab/nb-whisper-medium"),
         QStringLiteral("ggml-model.bin"),
         1'530'000'000,
         {}},
        {QStringLiteral("nb-whisper-medium-verbatim-q5_0"),
         QStringLiteral("NB-Whisper Medium Verbatim (q5_0)"),
         Variant::verbatim,
         Precision::q5_0,
         Size::medium,
         QStringLiteral("NbAiLab/nb-whisper-medium-verbatim"),
         small,
         539'000'000,
         {}},
        {QStringLiteral("nb-whisper-medium-semantic-q5_0"),
         QStringLiteral("NB-Whisper Medium Semantic (q5_0)"),
         Variant::semantic,
         Precision::q5_0,
         Size::medium,
         QStringLiteral("NbAiLab/nb-whisper-medium-semantic"),
         small,
         539'000'000,
         {}},
    };
    EXPECT_EQ(WhisperModel::all(), expected);
}

TEST(WhisperModel, TheGalleryIsTheMediumEntriesInTheSameOrder)
{
    EXPECT_EQ(WhisperModel::gallery(), WhisperModel::all().mid(1));
    for (const WhisperModel& model : WhisperModel::gallery())
        EXPECT_EQ(model.size, Size::medium);
}

TEST(WhisperModel, FindsByTheExactIdentifierOnly)
{
    EXPECT_EQ(WhisperModel::find(QStringLiteral("nb-whisper-medium-q5_0")), WhisperModel::all().at(1));
    EXPECT_EQ(WhisperModel::find(QStringLiteral("nb-whisper-small-q5_0")), WhisperModel::all().at(0));
    EXPECT_FALSE(WhisperModel::find(QStringLiteral("NB-WHISPER-MEDIUM-Q5_0")));
    EXPECT_FALSE(WhisperModel::find(QString()));
}

TEST(WhisperModel, TheFallbackIsMediumQ5)
{
    EXPECT_EQ(WhisperModel::fallback().id, QStringLiteral("nb-whisper-medium-q5_0"));
}

TEST(WhisperModel, DownloadAddressesAreBaseRepositoryAndFile)
{
    EXPECT_EQ(
        WhisperModel::fallback().downloadURL(hub).toString(),
        QStringLiteral("https://hub.example/NbAiLab/nb-whisper-medium/resolve/main/ggml-model-q5_0.bin"));
    EXPECT_EQ(WhisperModel::all().at(2).downloadURL(hub).toString(),
              QStringLiteral("https://hub.example/NbAiLab/nb-whisper-medium/resolve/main/ggml-model.bin"));
    EXPECT_EQ(
        WhisperModel::fallback().downloadURL(QUrl(QStringLiteral("http://127.0.0.1:8080/mirror/"))).path(),
        QStringLiteral("/mirror/NbAiLab/nb-whisper-medium/resolve/main/ggml-model-q5_0.bin"));
    for (const WhisperModel& model : WhisperModel::all())
        EXPECT_TRUE(model.downloadURL(hub).isValid());
}

TEST(WhisperModelDeathTest, AnInvalidAddressEndsTheProcess)
{
    EXPECT_DEATH(static_cast<void>(WhisperModel::fallback().downloadURL(QUrl())), "no valid address");
}

TEST(WhisperModel, FamilyNamesFollowTheVariant)
{
    const QList<WhisperModel>& all = WhisperModel::all();
    EXPECT_EQ(all.at(0).shortFamilyName(), QStringLiteral("NB-Whisper Medium"));
    EXPECT_EQ(all.at(2).shortFamilyName(), QStringLiteral("NB-Whisper Medium"));
    EXPECT_EQ(all.at(3).shortFamilyName(), QStringLiteral("NB-Whisper Verbatim"));
    EXPECT_EQ(all.at(4).shortFamilyName(), QStringLiteral("NB-Whisper Semantic"));
}

TEST(WhisperModel, PrecisionLabels)
{
    EXPECT_EQ(WhisperModel::all().at(1).precisionLabel(), QStringLiteral("Quantised (q5_0)"));
    EXPECT_EQ(WhisperModel::all().at(2).precisionLabel(), QStringLiteral("Full precision (f16)"));
}

TEST(WhisperModel, DescriptionsGoByVariantFirst)
{
    const QList<WhisperModel>& all = WhisperModel::all();
    EXPECT_EQ(
        all.at(1).description(),
        QStringLiteral("Clean, punctuated text. The best choice for everyday dictation – about 3× smaller "
                       "than full precision with nearly identical accuracy."));
    EXPECT_EQ(
        all.at(2).description(),
        QStringLiteral("Same model at full precision. Marginally more accurate on difficult audio, three "
                       "times the download and memory."));
    EXPECT_EQ(
        all.at(3).description(),
        QStringLiteral("Writes exactly what you said, including fillers and repetitions. For transcripts "
                       "that must be word-for-word."));
    EXPECT_EQ(
        all.at(4).description(),
        QStringLiteral("Rewrites more freely while keeping the meaning. Tidier sentences, less literal."));
    WhisperModel model = all.at(3);
    model.precision = Precision::f16;
    EXPECT_EQ(model.description(), all.at(3).description());
}

TEST(WhisperModel, EncodesWithTheFieldsNamesAndBack)
{
    WhisperModel model = WhisperModel::all().at(3);
    model.sha256 = QStringLiteral("ab").repeated(32);
    const QJsonObject object = model.toJson();
    const QStringList keys = object.keys();
    EXPECT_EQ(QSet<QString>(keys.begin(), keys.end()),
              (QSet<QString>{QStringLiteral("id"), QStringLiteral("displayName"), QStringLiteral("variant"),
                             QStringLiteral("precision"), QStringLiteral("size"), QStringLiteral("repo"),
                             QStringLiteral("fileName"), QStringLiteral("approximateSizeBytes"),
                             QStringLiteral("sha256")}));
    EXPECT_EQ(object.value(u"variant").toString(), QStringLiteral("verbatim"));
    EXPECT_EQ(object.value(u"precision").toString(), QStringLiteral("q5_0"));
    EXPECT_EQ(object.value(u"size").toString(), QStringLiteral("medium"));
    EXPECT_EQ(object.value(u"approximateSizeBytes").toInteger(), 539'000'000);
    for (const WhisperModel& each : WhisperModel::all() + QList<WhisperModel>{model})
        EXPECT_EQ(WhisperModel::fromJson(each.toJson()), each);
}

TEST(WhisperModel, WithoutAChecksumDecodesWithItAbsent)
{
    const QJsonObject object = WhisperModel::fallback().toJson();
    EXPECT_FALSE(object.contains(u"sha256"));
    ASSERT_TRUE(WhisperModel::fromJson(object));
    EXPECT_FALSE(WhisperModel::fromJson(object)->sha256);
}

TEST(WhisperModel, UnknownTextsAndMissingOrWrongFieldsDoNotDecode)
{
    const QJsonObject good = WhisperModel::fallback().toJson();
    for (const char* const key : {"variant", "precision", "size"}) {
        QJsonObject object = good;
        object.insert(QLatin1String(key), QStringLiteral("other"));
        EXPECT_FALSE(WhisperModel::fromJson(object)) << key;
    }
    for (const QString& key : good.keys()) {
        QJsonObject missing = good;
        missing.remove(key);
        EXPECT_FALSE(WhisperModel::fromJson(missing)) << qPrintable(key);
        QJsonObject wrong = good;
        wrong.insert(key, QJsonValue(true));
        EXPECT_FALSE(WhisperModel::fromJson(wrong)) << qPrintable(key);
    }
    QJsonObject broken = good;
    broken.insert(QStringLiteral("approximateSizeBytes"), 1.5);
    EXPECT_FALSE(WhisperModel::fromJson(broken));
}

TEST(WhisperModel, EqualEntriesHashAlike)
{
    const QSet<WhisperModel> set(WhisperModel::all().begin(), WhisperModel::all().end());
    EXPECT_EQ(set.size(), 5);
    EXPECT_TRUE(set.contains(WhisperModel::fallback()));
}

} // namespace
} // namespace tulvane
