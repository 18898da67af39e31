#include <base/Translate.h>
#include <models/ModelManager.h>
#include <ports/Workspace.h>
#include <ui/viewmodels/ModelGallery.h>

#include <algorithm>

namespace tulvane {

ModelGallery::ModelGallery(const UiContext& context, ModelEntry* selected, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_selected(selected)
{
    for (const WhisperModel& model : WhisperModel::gallery())
        m_entries.append(new ModelEntry(context, model.id, this));
    connect(selected, &ModelEntry::changed, this, &ModelGallery::statusChanged);
    connect(&context.models, &ModelManager::stateChanged, this, &ModelGallery::statusChanged);
}

bool ModelGallery::isAnythingInstalled() const
{
    const auto& states = m_context.models.states();
    return std::ranges::any_of(
        states, [](const ModelState& state) { return state.kind() == ModelState::Kind::ready; });
}

QString ModelGallery::statusKind() const
{
    if (m_selected->isLoading())
        return QStringLiteral("loading");
    if (m_selected->state() == u"ready")
        return QStringLiteral("ready");
    return isAnythingInstalled() ? QStringLiteral("missing") : QStringLiteral("none");
}

QString ModelGallery::status() const
{
    const QString kind = statusKind();
    if (kind == u"loading")
        return translate("Loading model…");
    if (kind == u"ready")
        return m_selected->isLoaded() ? translate("Loaded in memory") : translate("Ready");
    if (kind == u"missing")
        return translate("Not downloaded");
    return translate("Nothing yet – download the selected model to start dictating.");
}

void ModelGallery::showFolder() const
{
    m_context.workspace.reveal(m_context.models.modelsDirectory());
}

} // namespace tulvane
