#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace tulvane {

class Presentation;

/// How everything is drawn at the moment: light or dark, with or without animations, in which typeface. One
/// per process, read by every QML file through the theme. Main thread.
class Look final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY changed)
    Q_PROPERTY(bool animated READ isAnimated WRITE setAnimated NOTIFY changed)
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)

public:
    [[nodiscard]] static Look& shared();
    /// For the QML engine, which must not own it.
    static Look* create(QQmlEngine* qmlEngine, QJSEngine* jsEngine);

    /// Takes over what the desktop and the user's choice come to, now and at each change. `presentation`
    /// lives as long as the process.
    void follow(Presentation& presentation);

    [[nodiscard]] bool isDark() const { return m_dark; }
    void setDark(bool dark);
    [[nodiscard]] bool isAnimated() const { return m_animated; }
    void setAnimated(bool animated);
    /// The typeface that the type scale was drawn for, where it is installed; else the desktop's own.
    [[nodiscard]] QString fontFamily() const { return m_fontFamily; }

Q_SIGNALS:
    void changed();

private:
    Look();

    QString m_fontFamily;
    bool m_dark = false;
    bool m_animated = true;
};

} // namespace tulvane
