#include <base/Translate.h>
#include <models/WhisperModel.h>

#include <QHashFunctions>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

using Variant = WhisperModel::Variant;
using Precision = WhisperModel::Precision;

constexpr qint64 megabytes = 1'000'000;

WhisperModel entry(const QString& id, const QString& name, Variant variant, Precision precision,
                   const QString& repo, qint64 size)
{
    const QString file = precision == Precision::f16 ? QStringLiteral("ggml-model.bin")
                                                     : QStringLiteral("ggml-model-q5_0.bin");
    return {id,   name, variant,     precision, WhisperModel::Size::medium, u"NbAiLab/" + repo,
            file, size, std::nullopt};
}

WhisperModel smallEntry()
{
    WhisperModel model =
        entry(QStringLiteral("nb-whisper-small-q5_0"), QStringLiteral("NB-Whisper Small (q5_0)"),
              Variant::standard, Precision::q5_0, QStringLiteral("nb-whisper-small"), 175 * megabytes);
    model.size = WhisperModel::Size::small;
    return model;
}

QList<WhisperModel> mediumEntries()
{
    return {
        entry(QStringLiteral("nb-whisper-medium-q5_0"), QStringLiteral("NB-Whisper Medium (q5_0)"),
              Variant::standard, Precision::q5_0, QStringLiteral("nb-whisper-medium"), 539 * megabytes),
        entry(QStringLiteral("nb-whisper-medium-f16"), QStringLiteral("NB-Whisper Medium (f16)"),
              Variant::standard, Precision::f16, QStringLiteral("nb-whisper-medium"), 1'530 * megabytes),
        entry(QStringLiteral("nb-whisper-medium-verbatim-q5_0"),
              QStringLiteral("NB-Whisper Medium Verbatim (q5_0)"), Variant::verbatim, Precision::q5_0,
              QStringLiteral("nb-whisper-medium-verbatim"), 539 * megabytes),
        entry(QStringLiteral("nb-whisper-medium-semantic-q5_0"),
              QStringLiteral("NB-Whisper Medium Semantic (q5_0)"), Variant::semantic, Precision::q5_0,
              QStringLiteral("nb-whisper-medium-semantic"), 539 * megabytes),
    };
}

} // namespace

const QList<WhisperModel>& WhisperModel::all()
{
    static const QList<WhisperModel> list = QList<WhisperModel>{smallEntry()} + mediumEntries();
    return list;
}

const QList<WhisperModel>& WhisperModel::gallery()
{
    static const QList<WhisperModel> list = mediumEntries();
    return list;
}

std::optional<WhisperModel> WhisperModel::find(const QString& id)
{
    const auto found = std::ranges::find(all(), id, &WhisperModel::id);
    return found == all().end() ? std::nullopt : std::optional(*found);
}

const WhisperModel& WhisperModel::fallback()
{
    return gallery().constFirst();
}

WhisperModel WhisperModel::findOrFallback(const QString& id)
{
    return find(id).value_or(fallback());
}

QUrl WhisperModel::downloadURL(const QUrl& hub) const
{
    QUrl url(hub.toString() + repo + u"/resolve" + u"/main/" + fileName);
    if (!url.isValid() || url.host().isEmpty())
        qFatal("%s has no valid address", qPrintable(id));
    return url;
}

QString WhisperModel::shortFamilyName() const
{
    switch (variant) {
    case Variant::standard:
        return translate("NB-Whisper Medium");
    case Variant::verbatim:
        return translate("NB-Whisper Verbatim");
    case Variant::semantic:
        return translate("NB-Whisper Semantic");
    }
    Q_UNREACHABLE();
}

QString WhisperModel::precisionLabel() const
{
    return precision == Precision::q5_0 ? translate("Quantised (q5_0)") : translate("Full precision (f16)");
}

QString WhisperModel::description() const
{
    // The variant decides first; the precision only tells the two standard ones apart.
    if (variant == Variant::semantic)
        return translate("Rewrites more freely while keeping the meaning. Tidier sentences, less literal.");
    if (variant == Variant::verbatim)
        return translate("Writes exactly what you said, including fillers and repetitions. For transcripts "
                         "that must be word-for-word.");
    if (precision == Precision::f16)
        return translate("Same model at full precision. Marginally more accurate on difficult audio, three "
                         "times the download and memory.");
    return translate("Clean, punctuated text. The best choice for everyday dictation – about 3× smaller than "
                     "full precision with nearly identical accuracy.");
}

std::size_t qHash(const WhisperModel& model, std::size_t seed)
{
    // Equal entries have equal identifiers, and few others do.
    return ::qHash(model.id, seed);
}

} // namespace tulvane
