#include <base/Translate.h>
#include <models/ModelManager.h>
#include <ports/Workspace.h>
#include <ui/viewmodels/ModelGallery.h>

#include <algorithm>
#include <utility>

namespace tulvane {

ModelGallery::ModelGallery(const ModelManager& models, Workspace& workspace, QList<ModelEntry*> entries,
                           ModelEntry& selected, QObject* parent)
    : QObject(parent),
      m_models(models),
      m_workspace(workspace),
      m_entries(std::move(entries)),
      m_selected(selected)
{
    connect(&selected, &ModelEntry::changed, this, &ModelGallery::statusChanged);
    connect(&models, &ModelManager::stateChanged, this, &ModelGallery::statusChanged);
}

bool ModelGallery::isAnythingInstalled() const
{
    const auto& states = m_models.states();
    return std::ranges::any_of(
        states, [](const ModelState& state) { return state.kind() == ModelState::Kind::ready; });
}

ModelGallery::Status ModelGallery::statusKind() const
{
    if (m_selected.isLoading())
        return Status::Loading;
    if (m_selected.state() == ModelEntry::State::Ready)
        return Status::Ready;
    return isAnythingInstalled() ? Status::Missing : Status::None;
}

QString ModelGallery::status() const
{
    switch (statusKind()) {
    case Status::Loading:
        return translate("Loading model…");
    case Status::Ready:
        return m_selected.isLoaded() ? translate("Loaded in memory") : translate("Ready");
    case Status::Missing:
        return translate("Not downloaded");
    case Status::None:
        return translate("Nothing yet – download the selected model to start dictating.");
    }
    Q_UNREACHABLE();
}

void ModelGallery::showFolder() const
{
    m_workspace.reveal(m_models.modelsDirectory());
}

} // namespace tulvane
