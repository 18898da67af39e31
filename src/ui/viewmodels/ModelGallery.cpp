#include <base/ByteCount.h>
#include <base/Translate.h>
#include <models/ModelManager.h>
#include <ports/Workspace.h>
#include <speech/device/ComputingStatus.h>
#include <ui/viewmodels/ModelGallery.h>

#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace tulvane {

namespace {

using namespace std::chrono_literals;

constexpr std::array<std::chrono::milliseconds, 3> freed{200ms, 1s, 3s};

} // namespace

ModelGallery::ModelGallery(ModelManager& models, Workspace& workspace, const ComputingStatus* computing,
                           QList<ModelEntry*> entries, ModelEntry& selected, QObject* parent)
    : QObject(parent),
      m_models(models),
      m_workspace(workspace),
      m_computing(computing),
      m_entries(std::move(entries)),
      m_selected(selected)
{
    connect(&selected, &ModelEntry::changed, this, &ModelGallery::statusChanged);
    connect(&models, &ModelManager::stateChanged, this, &ModelGallery::statusChanged);
    connect(&models, &ModelManager::stateChanged, this, [this](const QString& id) {
        // A download tells its progress ten times a second; only its beginning and its end change anything.
        const bool isUnderWay = m_models.state(id).kind() == ModelState::Kind::downloading;
        if (!isUnderWay || !m_leftovers.isEmpty())
            readLeftovers();
    });
    if (m_computing != nullptr)
        connect(m_computing, &ComputingStatus::changed, this, &ModelGallery::statusChanged);
    readLeftovers();
}

void ModelGallery::readLeftovers()
{
    const qint64 bytes = m_models.leftoverBytes();
    const QString now = bytes > 0 ? byteCountText(bytes) : QString();
    const bool costs = bytes > 0 && m_models.hasResumableLeftovers();
    if (now == m_leftovers && costs == m_freeingCosts)
        return;
    m_leftovers = now;
    m_freeingCosts = costs;
    Q_EMIT leftoversChanged();
}

void ModelGallery::freeLeftovers()
{
    m_models.freeLeftovers();
    readLeftovers();
    // Another process may remove them, a moment later.
    for (const std::chrono::milliseconds later : freed)
        QTimer::singleShot(later, this, &ModelGallery::readLeftovers);
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
    if (m_selected.state() == ModelEntry::State::Downloading ||
        m_selected.state() == ModelEntry::State::Verifying)
        return Status::Coming;
    return isAnythingInstalled() ? Status::Missing : Status::None;
}

QString ModelGallery::status() const
{
    switch (statusKind()) {
    case Status::Loading:
        return translate("Loading model…");
    case Status::Ready:
        return m_selected.isLoaded() ? translate("Loaded in memory") : translate("Ready");
    case Status::Coming:
        return m_selected.state() == ModelEntry::State::Verifying
                   ? translate("Verifying…")
                   : translate("Downloading – %1").arg(m_selected.progress());
    case Status::Missing:
        return translate("Not downloaded");
    case Status::None:
        return translate("Nothing yet – download the selected model to start dictating.");
    }
    Q_UNREACHABLE();
}

QString ModelGallery::place() const
{
    if (m_computing == nullptr || !m_selected.isLoaded())
        return {};
    const ComputingPlace place = m_computing->place();
    if (!place.device.isEmpty())
        return translate("Runs on %1").arg(place.device);
    return place.isGivenUp ? translate("Runs on the processor, because the graphics card failed")
                           : translate("Runs on the processor");
}

void ModelGallery::showFolder() const
{
    m_workspace.reveal(m_models.modelsDirectory());
}

} // namespace tulvane
