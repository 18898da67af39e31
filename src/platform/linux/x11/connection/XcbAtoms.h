#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <xcb/xcb.h>

namespace tulvane {

/// The atoms of one connection, each asked for once. Waits for the server the first time. Belongs to the
/// thread that uses the connection.
class XcbAtoms final {
public:
    /// `connection` outlives this object.
    explicit XcbAtoms(xcb_connection_t* connection) : m_connection(connection) {}

    /// `XCB_ATOM_NONE` where the server does not answer.
    [[nodiscard]] xcb_atom_t atom(const QString& name);
    /// Asks for all that are not known in one round trip; empty for an atom that does not exist.
    [[nodiscard]] QStringList names(const QList<xcb_atom_t>& atoms);

private:
    void note(xcb_atom_t atom, const QString& name);

    xcb_connection_t* m_connection;
    QHash<QString, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QString> m_names;
};

} // namespace tulvane
