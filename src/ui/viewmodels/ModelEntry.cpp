#include <base/ByteCount.h>
#include <base/Translate.h>
#include <dictation/DictationSession.h>
#include <models/ModelError.h>
#include <models/ModelManager.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/ModelEntry.h>

#include <utility>

namespace tulvane {

ModelEntry::ModelEntry(AppSettings& settings, ModelManager& models, const DictationSession& session,
                       QString id, QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_models(models),
      m_session(session),
      m_id(std::move(id))
{
    connect(&models, &ModelManager::stateChanged, this, [this](const QString& changedId) {
        if (changedId != model().id)
            return;
        m_deletionFailure.clear();
        Q_EMIT changed();
    });
    connect(&settings.selectedModelID, &AnySetting::changed, this, &ModelEntry::changed);
    connect(&session, &DictationSession::loadedModelChanged, this, &ModelEntry::changed);
    connect(&session, &DictationSession::modelLoadingChanged, this, &ModelEntry::changed);
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
    const WhisperModel shown = model();
    const auto received = static_cast<qint64>(fraction() * static_cast<double>(shown.approximateSizeBytes));
    return byteCountText(received) + translate(" of ") + byteCountText(shown.approximateSizeBytes);
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
