#include <base/AtomicFile.h>
#include <base/Log.h>
#include <dictation/ModelFigures.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

constexpr qint64 longestFile = 64 * 1024;
constexpr std::chrono::seconds restBeforeStoring{2};

} // namespace

QString ModelFigures::standardFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/Tulvane/model-figures.json");
}

ModelFigures::ModelFigures(QString file, std::function<qint64()> resident, QObject* parent)
    : QObject(parent),
      m_file(std::move(file)),
      m_resident(std::move(resident))
{
    m_storing.setSingleShot(true);
    m_storing.setInterval(restBeforeStoring);
    connect(&m_storing, &QTimer::timeout, this, &ModelFigures::store);
    read();
}

ModelFigures::~ModelFigures()
{
    if (m_storing.isActive())
        store();
}

QString ModelFigures::nameOf(const QString& modelFile)
{
    return QFileInfo(modelFile).completeBaseName();
}

std::optional<ModelUse> ModelFigures::of(const QString& modelFile) const
{
    const auto found = m_uses.constFind(nameOf(modelFile));
    return found == m_uses.constEnd() ? std::nullopt : std::optional(*found);
}

void ModelFigures::noteLoading(const QString& previous)
{
    const std::optional<ModelUse> gone = previous.isEmpty() ? std::nullopt : of(previous);
    m_before = m_resident() - (gone ? gone->bytes : 0);
}

void ModelFigures::noteLoaded(const QString& modelFile, const QDateTime& now)
{
    ModelUse& use = m_uses[nameOf(modelFile)];
    const qint64 resident = m_resident();
    use.bytes = resident > 0 ? std::max<qint64>(0, resident - m_before) : 0;
    use.when = now;
    noteChange();
}

void ModelFigures::noteDictation(const QString& modelFile, double speechSeconds,
                                 std::chrono::nanoseconds work, const QDateTime& now)
{
    const double seconds = std::chrono::duration<double>(work).count();
    if (modelFile.isEmpty() || speechSeconds < shortestSpeech || seconds <= 0)
        return;
    ModelUse& use = m_uses[nameOf(modelFile)];
    use.speed = speechSeconds / seconds;
    use.when = now;
    noteChange();
}

void ModelFigures::read()
{
    const auto content = m_file.isEmpty() ? failure(FileFault{}) : readFile(m_file, longestFile);
    if (!content)
        return;
    const QJsonObject models = QJsonDocument::fromJson(*content).object();
    for (auto model = models.begin(); model != models.end(); ++model) {
        const QJsonObject use = model->toObject();
        m_uses.insert(model.key(),
                      {static_cast<qint64>(std::max(0.0, use.value(QLatin1String("bytes")).toDouble())),
                       std::max(0.0, use.value(QLatin1String("speed")).toDouble()),
                       QDateTime::fromString(use.value(QLatin1String("when")).toString(), Qt::ISODate)});
    }
}

void ModelFigures::noteChange()
{
    Q_EMIT changed();
    if (!m_file.isEmpty())
        m_storing.start();
}

void ModelFigures::store()
{
    QJsonObject models;
    for (auto use = m_uses.constBegin(); use != m_uses.constEnd(); ++use)
        models.insert(use.key(), QJsonObject{{QStringLiteral("bytes"), static_cast<double>(use->bytes)},
                                             {QStringLiteral("speed"), use->speed},
                                             {QStringLiteral("when"), use->when.toString(Qt::ISODate)}});
    if (const auto stored = replaceFile(m_file, QJsonDocument(models).toJson()); !stored)
        qCWarning(lcApp, "The models' figures could not be kept: %ls", qUtf16Printable(stored.error()));
}

} // namespace tulvane
