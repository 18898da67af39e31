#pragma once

#include <base/Translate.h>

#include <QMetaType>
#include <QString>

namespace tulvane {

/// Why a key combination is not a hot key of ours.
class HotkeyError final {
public:
    enum class Kind {
        taken,       ///< another program, or the desktop itself, holds the combination
        noSuchKey,   ///< this keyboard has no such key, or no such modifier
        outOfRange,  ///< the code or the modifiers are none that any system knows
        pastes,      ///< programs paste with it: as our own, no dictated text would ever arrive
        unsupported, ///< this desktop has no hot keys for programs; the reason says what to do
        unreachable, ///< the desktop does not answer, or has ended
        refused,     ///< the system said no for a reason of its own
        unchosen, ///< the desktop has it written into the user's settings, for which they have to choose it
    };

    /// The same words refuse such a combination where the user chooses one.
    static constexpr const char* usedForPasting = QT_TRANSLATE_NOOP(
        "tulvane", "Programs copy or paste with this key combination, and dictated texts are pasted.");

    /// `code` is the system's own error number, for the log.
    [[nodiscard]] static HotkeyError taken(int code) { return {Kind::taken, code, {}}; }
    /// The same where the desktop says whose it is: "KRunner".
    [[nodiscard]] static HotkeyError takenBy(int code, const QString& holder)
    {
        return {Kind::taken, code, holder};
    }
    [[nodiscard]] static HotkeyError noSuchKey() { return {Kind::noSuchKey, 0, {}}; }
    [[nodiscard]] static HotkeyError outOfRange() { return {Kind::outOfRange, 0, {}}; }
    [[nodiscard]] static HotkeyError pastes() { return {Kind::pastes, 0, {}}; }
    [[nodiscard]] static HotkeyError unsupported(const QString& reason)
    {
        return {Kind::unsupported, 0, reason};
    }
    [[nodiscard]] static HotkeyError unreachable() { return {Kind::unreachable, 0, {}}; }
    [[nodiscard]] static HotkeyError refused(int code) { return {Kind::refused, code, {}}; }

    [[nodiscard]] static HotkeyError unchosen() { return {Kind::unchosen, 0, {}}; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] int code() const { return m_code; }

    /// The text that the user reads; says what to do about it.
    [[nodiscard]] QString description() const
    {
        switch (m_kind) {
        case Kind::taken:
            if (!m_reason.isEmpty())
                return translate(
                           "%1 already uses this key combination. Choose another one, or free it there.")
                    .arg(m_reason);
            return translate(
                "Another program already uses this key combination. Choose another one, or free it "
                "in that program.");
        case Kind::noSuchKey:
            return translate("This keyboard has no such key. Choose another combination.");
        case Kind::outOfRange:
            return translate("The stored key combination makes no sense. Choose another one.");
        case Kind::pastes:
            return translate(usedForPasting);
        case Kind::unsupported:
            return m_reason;
        case Kind::unreachable:
            return translate(
                "The desktop does not answer, so no hotkey can be registered. Start Tulvane again.");
        case Kind::refused:
            return translate("The system refused this key combination (error %1). Choose another one.")
                .arg(m_code);
        case Kind::unchosen:
            return translate("Choose a key combination: this desktop has it written into its own keyboard "
                             "settings.");
        }
        Q_UNREACHABLE();
    }

    [[nodiscard]] friend bool operator==(const HotkeyError&, const HotkeyError&) = default;

private:
    HotkeyError(Kind kind, int code, const QString& reason) : m_kind(kind), m_code(code), m_reason(reason) {}

    Kind m_kind;
    int m_code;
    QString m_reason; ///< whose it is, where it is taken
};

} // namespace tulvane
