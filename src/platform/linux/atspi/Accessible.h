#pragma once

#include <QList>
#include <QString>

namespace tulvane {

/// An object of another program, by the program's name on the accessibility bus and the path there.
struct Accessible {
    QString service;
    QString path;

    [[nodiscard]] friend bool operator==(const Accessible&, const Accessible&) = default;
};

/// The states of an object, a bit each.
struct AccessibleStates {
    enum class State {
        active = 1,
        editable = 7,
        focused = 12,
        multiLine = 17,
        showing = 25,
        managesDescendants = 31, ///< its children come and go, and may be as many as a sheet has cells
        readOnly = 43,
    };

    quint64 bits = 0;

    [[nodiscard]] bool has(State state) const { return (bits >> static_cast<int>(state) & 1U) != 0; }
};

/// The roles that are distinguished; the others go by the name that the program gives them.
enum class AccessibleRole : quint32 {
    passwordText = 40,
    text = 61,
    entry = 79,
};

namespace accessibleInterfaces {

inline const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
inline const QString application = QStringLiteral("org.a11y.atspi.Application");
inline const QString text = QStringLiteral("org.a11y.atspi.Text");
inline const QString editableText = QStringLiteral("org.a11y.atspi.EditableText");

} // namespace accessibleInterfaces

/// Where every program, and the registry of them all, has its root.
inline const QString accessibleRootPath = QStringLiteral("/org/a11y/atspi/accessible/root");

} // namespace tulvane
