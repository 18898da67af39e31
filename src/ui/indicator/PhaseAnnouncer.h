#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace tulvane {

class DictationController;
class HUDModel;

/// Says to a screen reader what the indicator shows: each phase in its words, and once that a recording is
/// about to end by itself. Nothing takes the focus for it. Main thread.
class PhaseAnnouncer final : public QObject {
    Q_OBJECT

public:
    using Announce = std::function<void(const QString& text)>;

    /// Both collaborators outlive this object.
    PhaseAnnouncer(const DictationController& controller, const HUDModel& model, Announce announce);

private:
    void noteTime(const HUDModel& model);

    Announce m_announce;
    bool m_isEnding = false;
};

} // namespace tulvane
