#include <app/cli/ModelsOutput.h>
#include <base/ByteCount.h>
#include <models/ModelManager.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace tulvane::cli {

namespace {

using Kind = ModelState::Kind;

constexpr int barWidth = 30;
// A speed is printed once it means something.
constexpr qint64 firstSpeedMilliseconds = 500;

QJsonObject object(const ModelManager& manager, const WhisperModel& model, const QString& selected)
{
    const ModelState state = manager.state(model.id);
    const double fraction = state.kind() == Kind::ready ? 1.0 : state.fraction();
    return {{QStringLiteral("id"), model.id},
            {QStringLiteral("state"), state.name()},
            {QStringLiteral("fraction"), fraction},
            {QStringLiteral("path"), manager.fileURL(model)},
            {QStringLiteral("selected"), model.id == selected}};
}

QString compact(const QJsonDocument& document)
{
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

QString stateText(const ModelState& state)
{
    switch (state.kind()) {
    case Kind::downloading:
        return QStringLiteral("downloading %1 %").arg(std::floor(state.fraction() * 100));
    case Kind::failed:
        return QStringLiteral("failed");
    case Kind::notDownloaded:
        return QStringLiteral("not downloaded");
    case Kind::verifying:
        return QStringLiteral("verifying");
    case Kind::ready:
        return QStringLiteral("ready");
    }
    Q_UNREACHABLE();
}

} // namespace

QString modelsTable(const ModelManager& manager, const QString& selected)
{
    constexpr int stateWidth = 18;
    constexpr int sizeWidth = 9;
    qsizetype widest = 0;
    for (const WhisperModel& model : manager.catalogue())
        widest = std::max(widest, model.id.size());
    QString text;
    for (const WhisperModel& model : manager.catalogue()) {
        text += model.id == selected ? QStringLiteral("* ") : QStringLiteral("  ");
        text += model.id.leftJustified(widest + 2) +
                stateText(manager.state(model.id)).leftJustified(stateWidth) +
                byteCountText(model.approximateSizeBytes).leftJustified(sizeWidth) + model.displayName +
                u'\n';
    }
    return text;
}

QString modelsJson(const ModelManager& manager, const QString& selected)
{
    QJsonArray array;
    for (const WhisperModel& model : manager.catalogue())
        array.append(object(manager, model, selected));
    return compact(QJsonDocument(array));
}

QString modelJson(const ModelManager& manager, const WhisperModel& model, const QString& selected)
{
    return compact(QJsonDocument(object(manager, model, selected)));
}

QString verificationJson(const WhisperModel& model, const QString& file,
                         const Result<void, ModelError>& verified)
{
    QJsonObject object{{QStringLiteral("id"), model.id},
                       {QStringLiteral("file"), file},
                       {QStringLiteral("sound"), verified.has_value()}};
    if (!verified)
        object.insert(QStringLiteral("problem"), verified.error().description());
    return compact(QJsonDocument(object));
}

DownloadBar::DownloadBar(Console& console, const ModelManager& manager, const WhisperModel& model, bool quiet)
    : m_console(console),
      m_expectedBytes(model.approximateSizeBytes)
{
    if (quiet || !console.outIsTerminal)
        return;
    const QString id = model.id;
    connect(&manager, &ModelManager::stateChanged, this,
            [this, id](const QString& changed, const ModelState& state) {
                if (changed == id)
                    draw(state);
            });
    draw(manager.state(id));
}

DownloadBar::~DownloadBar()
{
    if (m_shown)
        m_console.out << Qt::endl;
}

void DownloadBar::draw(const ModelState& state)
{
    if (state.kind() != Kind::downloading && state.kind() != Kind::verifying)
        return;
    // The first fraction may be what an earlier try had left, which is no speed of this one.
    if (m_firstFraction < 0 && state.fraction() > 0) {
        m_firstFraction = state.fraction();
        m_time.start();
    }
    const qint64 elapsed = m_time.isValid() ? m_time.elapsed() : 0;
    // "Erase to the end of the line", so that a shorter text leaves nothing of a longer one.
    m_console.out << u'\r' << line(state, m_expectedBytes, m_firstFraction, elapsed) << "\x1b[K" << Qt::flush;
    m_shown = true;
}

QString DownloadBar::line(const ModelState& state, qint64 expectedBytes, double firstFraction,
                          qint64 elapsedMilliseconds)
{
    if (state.kind() == Kind::verifying)
        return QStringLiteral("Verifying…");
    const double fraction = state.fraction();
    const int filled = static_cast<int>(fraction * barWidth);
    const auto whole = static_cast<double>(expectedBytes);
    QString text = u'[' + QString(filled, u'#') + QString(barWidth - filled, u'-') +
                   QStringLiteral("] %1 %  ").arg(std::floor(fraction * 100), 3) +
                   byteCountText(static_cast<qint64>(fraction * whole)) + u" of " +
                   byteCountText(expectedBytes);
    if (elapsedMilliseconds >= firstSpeedMilliseconds && fraction > firstFraction) {
        const double perSecond =
            (fraction - firstFraction) * whole * 1000.0 / static_cast<double>(elapsedMilliseconds);
        text += u"  " + byteCountText(static_cast<qint64>(perSecond)) + u"/s";
    }
    return text;
}

} // namespace tulvane::cli
