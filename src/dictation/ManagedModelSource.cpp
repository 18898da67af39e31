#include <dictation/ManagedModelSource.h>
#include <models/ModelManager.h>
#include <settings/AppSettings.h>

namespace tulvane {

ManagedModelSource::ManagedModelSource(const AppSettings& settings, const ModelManager& manager,
                                       QObject* parent)
    : ModelSource(parent),
      m_settings(settings),
      m_manager(manager)
{
    connect(&manager, &ModelManager::stateChanged, this, &ModelSource::statesChanged);
}

std::optional<QString> ManagedModelSource::readyFile() const
{
    const WhisperModel model = WhisperModel::findOrFallback(m_settings.selectedModelID());
    if (!m_manager.isDownloaded(model))
        return std::nullopt;
    return m_manager.fileURL(model);
}

} // namespace tulvane
