#include <dictation/DictationController.h>
#include <dictation/PhaseText.h>
#include <ui/indicator/HUDModel.h>
#include <ui/indicator/PhaseAnnouncer.h>

#include <utility>

namespace tulvane {

PhaseAnnouncer::PhaseAnnouncer(const DictationController& controller, const HUDModel& model,
                               Announce announce)
    : m_announce(std::move(announce))
{
    connect(&controller, &DictationController::phaseChanged, this, [this](const Phase& phase) {
        if (const QString text = textOf(phase); !text.isEmpty())
            m_announce(text);
    });
    connect(&model, &HUDModel::timeChanged, this, [this, &model] { noteTime(model); });
}

void PhaseAnnouncer::noteTime(const HUDModel& model)
{
    if (std::exchange(m_isEnding, model.isEnding()) != model.isEnding() && m_isEnding)
        m_announce(model.time());
}

} // namespace tulvane
