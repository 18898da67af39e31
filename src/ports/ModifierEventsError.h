#pragma once

#include <base/Translate.h>

#include <QMetaType>
#include <QString>

namespace tulvane {

/// Why modifier keys cannot be watched.
class ModifierEventsError final {
public:
    enum class Kind {
        notPermitted, ///< the user has not given leave
        keyNotSeen,   ///< this key never reaches programs here
        unsupported,  ///< this desktop lets no program watch keys; the reason says what to do
        unreachable,  ///< the desktop does not answer, or has ended
    };

    [[nodiscard]] static ModifierEventsError notPermitted() { return {Kind::notPermitted, {}}; }
    [[nodiscard]] static ModifierEventsError keyNotSeen(const QString& key)
    {
        return {Kind::keyNotSeen, key};
    }
    [[nodiscard]] static ModifierEventsError unsupported(const QString& reason)
    {
        return {Kind::unsupported, reason};
    }
    [[nodiscard]] static ModifierEventsError unreachable() { return {Kind::unreachable, {}}; }

    [[nodiscard]] Kind kind() const { return m_kind; }

    /// The text that the user reads; says what to do about it.
    [[nodiscard]] QString description() const
    {
        switch (m_kind) {
        case Kind::notPermitted:
            return translate(
                "Tulvane may not watch the keyboard. Allow input monitoring in the privacy settings.");
        case Kind::keyNotSeen:
            return translate("The key %1 never reaches programs on this desktop. Choose another key.")
                .arg(m_detail);
        case Kind::unsupported:
            return m_detail;
        case Kind::unreachable:
            return translate("The desktop does not answer, so no key can be watched. Start Tulvane again.");
        }
        Q_UNREACHABLE();
    }

    [[nodiscard]] friend bool operator==(const ModifierEventsError&, const ModifierEventsError&) = default;

private:
    ModifierEventsError(Kind kind, const QString& detail) : m_kind(kind), m_detail(detail) {}

    Kind m_kind;
    QString m_detail;
};

} // namespace tulvane
