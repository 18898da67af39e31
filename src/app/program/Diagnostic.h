#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

namespace tulvane {

/// One line of the doctor's: something that dictation needs, and whether it works here.
struct Diagnostic {
    QString subject; ///< "microphone"
    bool works = false;
    QString text;   ///< what there is, or why it does not work
    QString remedy; ///< what to do about it; empty where it works

    [[nodiscard]] static Diagnostic good(const QString& subject, const QString& text)
    {
        return {subject, true, text, {}};
    }
    [[nodiscard]] static Diagnostic bad(const QString& subject, const QString& text, const QString& remedy)
    {
        return {subject, false, text, remedy};
    }

    [[nodiscard]] QJsonObject toJson() const
    {
        return {{QStringLiteral("subject"), subject},
                {QStringLiteral("works"), works},
                {QStringLiteral("text"), text},
                {QStringLiteral("remedy"), remedy}};
    }
    [[nodiscard]] static Diagnostic fromJson(const QJsonObject& json)
    {
        return {json[QStringLiteral("subject")].toString(), json[QStringLiteral("works")].toBool(),
                json[QStringLiteral("text")].toString(), json[QStringLiteral("remedy")].toString()};
    }

    [[nodiscard]] friend bool operator==(const Diagnostic&, const Diagnostic&) = default;
};

using Diagnostics = QList<Diagnostic>;

/// What any process can find out, in the order of the report. The hotkeys, which only the running program
/// knows, stand between the two.
struct Examination {
    Diagnostics session;   ///< what the desktop gives: its session, sound and permissions
    Diagnostics dictation; ///< what a dictation needs beyond that
};

} // namespace tulvane
