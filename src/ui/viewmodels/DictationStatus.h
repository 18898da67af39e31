#pragma once

#include <dictation/Phase.h>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class DictationController;
class DictationSession;

/// How dictating stands, as a kind and in words: the phase, and while that is idle, what the next dictation
/// waits for. The home page and the status item show it. Main thread.
class DictationStatus final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    enum class Kind { Ready, Loading, Recording, Working, Setup, Notice, Error };
    Q_ENUM(Kind)

    /// Both collaborators outlive this object.
    DictationStatus(const DictationController& controller, const DictationSession& session,
                    QObject* parent = nullptr);

    [[nodiscard]] Kind kind() const;
    [[nodiscard]] QString text() const;
    /// Its first line, for a place with room for one.
    [[nodiscard]] QString line() const { return text().section(u'\n', 0, 0); }
    [[nodiscard]] const Phase& phase() const;

Q_SIGNALS:
    void changed();

private:
    const DictationController& m_controller;
    const DictationSession& m_session;
};

} // namespace tulvane
