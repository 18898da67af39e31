#include <base/ByteCount.h>
#include <base/Clock.h>
#include <base/Translate.h>
#include <dictation/DictationSession.h>
#include <dictation/ModelFigures.h>
#include <models/ModelError.h>
#include <models/ModelManager.h>
#include <settings/AppSettings.h>
#include <stats/StatsFormat.h>
#include <ui/viewmodels/ModelEntry.h>

#include <QLocale>
#include <QStringList>

#include <chrono>
#include <cmath>
#include <utility>

namespace tulvane {

namespace {

constexpr qint64 smallestWorthSaying = 50'000'000;

} // namespace

ModelEntry::ModelEntry(const Dependencies& needed, QString id, QObject* parent)
    : QObject(parent),
      m_settings(needed.settings),
      m_models(needed.models),
      m_session(needed.session),
      m_figures(needed.figures),
      m_clock(needed.clock),
      m_id(std::move(id))
{
    connect(&m_models, &ModelManager::stateChanged, this, [this](const QString& changedId) {
        if (changedId != model().id)
            return;
        m_deletionFailure.clear();
        noteState();
        Q_EMIT changed();
    });
    connect(&m_figures, &ModelFigures::changed, this, &ModelEntry::changed);
    connect(&m_settings.selectedModelID, &AnySetting::changed, this, [this] {
        if (m_id.isEmpty())
            m_rate.clear();
        Q_EMIT changed();
    });
    connect(&m_session, &DictationSession::loadedModelChanged, this, &ModelEntry::changed);
    connect(&m_session, &DictationSession::modelLoadingChanged, this, &ModelEntry::changed);
}

WhisperModel ModelEntry::model() const
{
    return WhisperModel::findOrFallback(m_id.isEmpty() ? m_settings.selectedModelID() : m_id);
}

ModelState ModelEntry::modelState() const
{
    return m_models.state(model().id);
}

ModelEntry::State ModelEntry::state() const
{
    switch (modelState().kind()) {
    case ModelState::Kind::downloading:
        return State::Downloading;
    case ModelState::Kind::failed:
        return State::Failed;
    case ModelState::Kind::notDownloaded:
        return State::NotDownloaded;
    case ModelState::Kind::verifying:
        return State::Verifying;
    case ModelState::Kind::ready:
        return State::Ready;
    }
    Q_UNREACHABLE();
}

QString ModelEntry::size() const
{
    return byteCountText(model().approximateSizeBytes);
}

bool ModelEntry::isSelected() const
{
    return model().id == WhisperModel::findOrFallback(m_settings.selectedModelID()).id;
}

QString ModelEntry::progress() const
{
    return byteCountText(receivedBytes()) + translate(" of ") + size();
}

qint64 ModelEntry::receivedBytes() const
{
    return static_cast<qint64>(fraction() * static_cast<double>(model().approximateSizeBytes));
}

void ModelEntry::noteState()
{
    if (state() == State::Downloading)
        m_rate.note(receivedBytes(), m_clock.elapsed());
    else
        m_rate.clear();
}

QString ModelEntry::pace() const
{
    const std::optional<double> rate = m_rate.bytesPerSecond();
    if (state() != State::Downloading || !rate || *rate < 1)
        return {};
    const auto missing = static_cast<double>(model().approximateSizeBytes - receivedBytes());
    auto left = std::chrono::seconds(static_cast<qint64>(std::ceil(missing / *rate)));
    // Seconds count only near the end.
    if (left >= std::chrono::minutes(2))
        left = std::chrono::ceil<std::chrono::minutes>(left);
    return translate("%1/s, %2 left").arg(byteCountText(static_cast<qint64>(*rate)), durationText(left));
}

QString ModelEntry::figures() const
{
    const std::optional<ModelUse> use = m_figures.of(m_models.fileURL(model()));
    if (!use)
        return {};
    const QLocale locale;
    QStringList parts;
    // What computes elsewhere takes next to nothing here.
    if (use->bytes > smallestWorthSaying)
        parts.append(translate("%1 in memory").arg(byteCountText(use->bytes)));
    if (use->speed > 0)
        parts.append(translate("%1 s of speech in a second").arg(locale.toString(use->speed, 'f', 1)));
    if (!parts.isEmpty())
        parts.append(translate("measured here on %1").arg(formatDay(use->when.date())));
    return parts.join(QStringLiteral("  ·  "));
}

QString ModelEntry::progressInBrief() const
{
    if (state() == State::Verifying)
        return translate("Verifying…");
    return state() == State::Downloading ? QStringLiteral("%1 %").arg(static_cast<int>(fraction() * 100))
                                         : QString();
}

QString ModelEntry::message() const
{
    return m_deletionFailure.isEmpty() ? modelState().message() : m_deletionFailure;
}

bool ModelEntry::isLoaded() const
{
    return modelState() == ModelState::ready() && m_session.loadedModel() == m_models.fileURL(model());
}

bool ModelEntry::isLoading() const
{
    return isSelected() && modelState() == ModelState::ready() && m_session.isModelLoading();
}

void ModelEntry::download()
{
    m_models.download(model());
}

void ModelEntry::cancel()
{
    m_models.cancel(model());
}

void ModelEntry::use()
{
    m_settings.selectedModelID.set(model().id);
}

void ModelEntry::remove()
{
    const auto removed = m_models.deleteModel(model());
    m_deletionFailure = removed ? QString() : removed.error().description();
    Q_EMIT changed();
}

} // namespace tulvane
