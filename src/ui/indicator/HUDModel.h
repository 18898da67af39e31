#pragma once

#include <dictation/Phase.h>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

/// What the indicator shows. Main thread.
class HUDModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(State state READ state NOTIFY phaseChanged)
    /// The phase's symbol, and its words in the user's language; an idle phase has none.
    Q_PROPERTY(QString symbol READ symbol NOTIFY phaseChanged)
    Q_PROPERTY(QString label READ label NOTIFY phaseChanged)
    /// The microphone's level, 0 to 1.
    Q_PROPERTY(float level READ level NOTIFY levelChanged)
    /// How long the recording has lasted, or how long it can still last; empty where it is not worth saying
    Q_PROPERTY(QString time READ time NOTIFY timeChanged)
    /// The recording ends by itself in a few seconds
    Q_PROPERTY(bool ending READ isEnding NOTIFY timeChanged)
    /// Whether the indicator is on the screen: nothing moves while it is not.
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged)
    /// Whether the desktop blends the indicator with what lies below it.
    Q_PROPERTY(bool blended READ isBlended NOTIFY blendedChanged)

public:
    /// The kind of the phase, as QML names it.
    enum class State {
        Idle = static_cast<int>(Phase::Kind::idle),
        Recording = static_cast<int>(Phase::Kind::recording),
        Transcribing = static_cast<int>(Phase::Kind::transcribing),
        Inserting = static_cast<int>(Phase::Kind::inserting),
        Notice = static_cast<int>(Phase::Kind::notice),
        Error = static_cast<int>(Phase::Kind::error),
    };
    Q_ENUM(State)

    [[nodiscard]] const Phase& phase() const { return m_phase; }
    void setPhase(const Phase& phase);
    [[nodiscard]] float level() const { return m_level; }
    void setLevel(float level);
    [[nodiscard]] const QString& time() const { return m_time; }
    [[nodiscard]] bool isEnding() const { return m_isEnding; }
    void setTime(const QString& time, bool isEnding);
    [[nodiscard]] bool isShown() const { return m_isShown; }
    void setShown(bool shown);
    [[nodiscard]] bool isBlended() const { return m_isBlended; }
    void setBlended(bool blended);

    [[nodiscard]] State state() const { return static_cast<State>(m_phase.kind); }
    [[nodiscard]] QString symbol() const;
    [[nodiscard]] QString label() const;

Q_SIGNALS:
    void phaseChanged();
    void levelChanged();
    void timeChanged();
    void shownChanged();
    void blendedChanged();

private:
    Phase m_phase;
    float m_level = 0;
    QString m_time;
    bool m_isEnding = false;
    bool m_isShown = false;
    bool m_isBlended = true;
};

} // namespace tulvane
