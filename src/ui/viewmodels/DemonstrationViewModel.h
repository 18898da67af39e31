#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class Demonstration;

/// "Hear how it works" in the setup guide. Main thread.
class DemonstrationViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool running READ isRunning NOTIFY changed)
    /// What the demo model wrote; empty while there is nothing
    Q_PROPERTY(QString text READ text NOTIFY changed)
    /// Why there is nothing; empty otherwise
    Q_PROPERTY(QString failure READ failure NOTIFY changed)

public:
    /// `demonstration` outlives this object.
    DemonstrationViewModel(Demonstration& demonstration, QObject* parent);

    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] QString text() const;
    [[nodiscard]] QString failure() const;

    Q_INVOKABLE void start();

Q_SIGNALS:
    void changed();

private:
    Demonstration& m_demonstration;
};

} // namespace tulvane
