#include <platform/linux/x11/connection/XcbAtoms.h>
#include <platform/linux/x11/connection/XcbReply.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace tulvane {

xcb_atom_t XcbAtoms::atom(const QString& name)
{
    const auto known = m_atoms.constFind(name);
    if (known != m_atoms.cend())
        return *known;
    const QByteArray bytes = name.toUtf8();
    const auto reply = xcbReply(
        m_connection, xcb_intern_atom_reply,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(bytes.size()), bytes.constData()));
    if (!reply)
        return XCB_ATOM_NONE;
    note(reply->atom, name);
    return reply->atom;
}

QStringList XcbAtoms::names(const QList<xcb_atom_t>& atoms)
{
    std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> asked;
    for (const xcb_atom_t atom : atoms) {
        if (!m_names.contains(atom))
            asked.emplace_back(atom, xcb_get_atom_name(m_connection, atom));
    }
    for (const auto& [atom, cookie] : asked) {
        if (const auto reply = xcbReply(m_connection, xcb_get_atom_name_reply, cookie))
            note(atom, QString::fromUtf8(xcb_get_atom_name_name(reply.get()),
                                         xcb_get_atom_name_name_length(reply.get())));
    }
    QStringList names;
    std::ranges::transform(atoms, std::back_inserter(names),
                           [&](xcb_atom_t atom) { return m_names.value(atom); });
    return names;
}

void XcbAtoms::note(xcb_atom_t atom, const QString& name)
{
    m_atoms.insert(name, atom);
    m_names.insert(atom, name);
}

} // namespace tulvane
