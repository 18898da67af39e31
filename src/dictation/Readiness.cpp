#include <dictation/ModelSource.h>
#include <dictation/Readiness.h>
#include <permissions/PermissionsService.h>
#include <settings/AppSettings.h>

#include <utility>

namespace tulvane {

Readiness::Readiness(const AppSettings& settings, const PermissionsService& permissions,
                     const ModelSource& models, std::function<bool()> hasCombination, QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_permissions(permissions),
      m_models(models),
      m_hasCombination(std::move(hasCombination))
{
    m_couldDictate = canDictate();
    connect(&permissions, &PermissionsService::microphoneChanged, this, &Readiness::compare);
    connect(&models, &ModelSource::statesChanged, this, &Readiness::compare);
    connect(&settings.selectedModelID, &AnySetting::changed, this, &Readiness::compare);
    connect(&settings.modifierHotkey, &AnySetting::changed, this, &Readiness::changed);
}

bool Readiness::hasMicrophone() const
{
    return m_permissions.microphone() == MicrophoneAccess::authorized;
}

bool Readiness::hasModel() const
{
    return m_models.readyFile().has_value();
}

bool Readiness::hasHotkey() const
{
    return m_hasCombination() || m_settings.modifierHotkey() != ModifierHotkey::none;
}

void Readiness::compare()
{
    const bool can = canDictate();
    if (std::exchange(m_couldDictate, can) != can)
        Q_EMIT canDictateChanged();
    Q_EMIT changed();
}

} // namespace tulvane
