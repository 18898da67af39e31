#pragma once

#include <dictation/Phase.h>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

/// What the pill shows. Main thread.
class HUDModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// The phase's name: "idle", "recording", "error".
    Q_PROPERTY(QString phase READ phaseName NOTIFY phaseChanged)
    /// The phase's symbol, and its words in the user's language; an idle phase has none.
    Q_PROPERTY(QString symbol READ symbol NOTIFY phaseChanged)
    Q_PROPERTY(QString label READ label NOTIFY phaseChanged)
    /// The microphone's level, 0 to 1.
    Q_PROPERTY(float level READ level NOTIFY levelChanged)
    /// Whether the pill is on the screen: nothing moves while it is not.
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged)
    /// Whether the desktop blends the pill with what lies below it.
    Q_PROPERTY(bool blended READ isBlended NOTIFY blendedChanged)

public:
    [[nodiscard]] const Phase& phase() const { return m_phase; }
    void setPhase(const Phase& phase);
    [[nodiscard]] float level() const { return m_level; }
    void setLevel(float level);
    [[nodiscard]] bool isShown() const { return m_isShown; }
    void setShown(bool shown);
    [[nodiscard]] bool isBlended() const { return m_isBlended; }
    void setBlended(bool blended);

    [[nodiscard]] QString phaseName() const { return nameOf(m_phase.kind); }
    [[nodiscard]] QString symbol() const;
    [[nodiscard]] QString label() const;

Q_SIGNALS:
    void phaseChanged();
    void levelChanged();
    void shownChanged();
    void blendedChanged();

private:
    Phase m_phase;
    float m_level = 0;
    bool m_isShown = false;
    bool m_isBlended = true;
};

} // namespace tulvane
