#include <base/ByteCount.h>
#include <base/Translate.h>
#include <dictation/DictationSession.h>
#include <models/ModelError.h>
#include <models/ModelManager.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/ModelEntry.h>

#include <utility>

namespace tulvane {

namespace {

WhisperModel selectedModel(const AppSettings& settings)
{
    return WhisperModel::find(settings.selectedModelID()).value_or(WhisperModel::fallback());
}

} // namespace

ModelEntry::ModelEntry(const UiContext& context, QString id, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_id(std::move(id))
{
    connect(&context.models, &ModelManager::stateChanged, this, [this](const QString& changedId) {
        if (changedId != model().id)
            return;
        m_deletionFailure.clear();
        Q_EMIT changed();
    });
    connect(&context.settings.selectedModelID, &AnySetting::changed, this, &ModelEntry::changed);
    connect(&context.session, &DictationSession::loadedModelChanged, this, &ModelEntry::changed);
    connect(&context.session, &DictationSession::modelLoadingChanged, this, &ModelEntry::changed);
}

WhisperModel ModelEntry::model() const
{
    return WhisperModel::find(m_id).value_or(selectedModel(m_context.settings));
}

ModelState ModelEntry::modelState() const
{
    return m_context.models.state(model().id);
}

QString ModelEntry::size() const
{
    return byteCountText(model().approximateSizeBytes);
}

bool ModelEntry::isSelected() const
{
    return model().id == selectedModel(m_context.settings).id;
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
    return modelState() == ModelState::ready() &&
           m_context.session.loadedModel() == m_context.models.fileURL(model());
}

bool ModelEntry::isLoading() const
{
    return isSelected() && modelState() == ModelState::ready() && m_context.session.isModelLoading();
}

void ModelEntry::download()
{
    m_context.models.download(model());
}

void ModelEntry::cancel()
{
    m_context.models.cancel(model());
}

void ModelEntry::use()
{
    m_context.settings.selectedModelID.set(model().id);
}

void ModelEntry::remove()
{
    const auto removed = m_context.models.deleteModel(model());
    m_deletionFailure = removed ? QString() : removed.error().description();
    Q_EMIT changed();
}

} // namespace tulvane
