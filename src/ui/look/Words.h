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
        // A line never ends within the models' name. The sign is invisible, and a screen reader gets none.
        return tulvane::translate(english.toUtf8().constData())
            .replace(QStringLiteral("NB-Whisper"), QStringLiteral("NB-\u2060Whisper"));
    }
};

} // namespace tulvane
