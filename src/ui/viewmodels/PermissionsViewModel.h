#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class PermissionsService;

struct Obstacle;

/// What stands in the way, and what to do about it, in one line.
[[nodiscard]] QString inWords(const Obstacle& obstacle);

/// The permissions as the pages show them, with the way to each that is missing. Main thread.
class PermissionsViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool microphone READ microphone NOTIFY changed)
    Q_PROPERTY(bool accessibility READ accessibility NOTIFY changed)
    /// Why it is missing and what to do, in words; empty when it is granted or nothing is known
    Q_PROPERTY(QString microphoneObstacle READ microphoneObstacle NOTIFY changed)
    Q_PROPERTY(QString accessibilityObstacle READ accessibilityObstacle NOTIFY changed)
    /// Whether the desktop asks for it in a dialog of its own, with `askForAccessibility`
    Q_PROPERTY(bool accessibilityIsAsked READ accessibilityIsAsked NOTIFY changed)

public:
    /// The service outlives this object.
    PermissionsViewModel(PermissionsService& permissions, QObject* parent);

    [[nodiscard]] bool microphone() const;
    [[nodiscard]] bool accessibility() const;
    [[nodiscard]] QString microphoneObstacle() const;
    [[nodiscard]] QString accessibilityObstacle() const;

    [[nodiscard]] bool accessibilityIsAsked() const;

    /// The desktop's settings pane for it.
    Q_INVOKABLE void openMicrophoneSettings() const;
    Q_INVOKABLE void openAccessibilitySettings() const;
    /// Has the desktop ask.
    Q_INVOKABLE void askForAccessibility() const;
    /// Has a stale decision forgotten, and asks anew.
    Q_INVOKABLE void resetAccessibility() const;

Q_SIGNALS:
    void changed();

private:
    PermissionsService& m_permissions;
};

} // namespace tulvane
