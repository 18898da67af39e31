#pragma once

#include <base/Translate.h>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

/// The translate function, as QML calls it: `Words.translate("Ready")`. Main thread.
class Words final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    Q_INVOKABLE [[nodiscard]] QString translate(const QString& english) const
    {
        return tulvane::translate(english.toUtf8().constData());
    }
};

} // namespace tulvane
