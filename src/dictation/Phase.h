#pragma once

#include <QMetaType>
#include <QString>

namespace tulvane {

/// What the user sees of a dictation.
struct Phase {
    enum class Kind {
        notice,       ///< a short message, in `text`
        error,        ///< an error message, in `text`
        idle,         ///< nothing happening
        recording,    ///< the microphone is open
        transcribing, ///< the engine is working
        inserting,    ///< the text is being delivered
    };

    Kind kind = Kind::idle;
    /// Of a notice or an error; never dictated text. A second line, where there is one, says why.
    QString text;

    /// The message alone, for where there is room for no more.
    [[nodiscard]] QString firstLine() const { return text.section(u'\n', 0, 0); }

    [[nodiscard]] static Phase notice(const QString& text) { return {Kind::notice, text}; }
    [[nodiscard]] static Phase error(const QString& text) { return {Kind::error, text}; }

    [[nodiscard]] bool operator==(const Phase&) const = default;
};

/// The phase's name as other programs read it: "idle", "recording".
[[nodiscard]] inline QString nameOf(Phase::Kind kind)
{
    switch (kind) {
    case Phase::Kind::notice:
        return QStringLiteral("notice");
    case Phase::Kind::error:
        return QStringLiteral("error");
    case Phase::Kind::idle:
        return QStringLiteral("idle");
    case Phase::Kind::recording:
        return QStringLiteral("recording");
    case Phase::Kind::transcribing:
        return QStringLiteral("transcribing");
    case Phase::Kind::inserting:
        return QStringLiteral("inserting");
    }
    Q_UNREACHABLE();
}

} // namespace tulvane

Q_DECLARE_METATYPE(tulvane::Phase)
