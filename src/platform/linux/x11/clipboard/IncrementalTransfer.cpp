#include <platform/linux/x11/clipboard/IncrementalTransfer.h>

#include <algorithm>

namespace tulvane {

IncrementalTransfer::IncrementalTransfer(X11Connection& link, xcb_window_t reader, xcb_atom_t property,
                                         const TargetOffer& offered)
    : m_link(link),
      m_reader(reader),
      m_property(property),
      m_offer(offered)
{
}

void IncrementalTransfer::begin()
{
    const auto size = static_cast<std::uint32_t>(m_offer.bytes.size());
    xcb_change_property(m_link.connection(), XCB_PROP_MODE_REPLACE, m_reader, m_property,
                        m_link.atom(QStringLiteral("INCR")), 32, 1, &size);
}

bool IncrementalTransfer::advance()
{
    const qsizetype length = std::min(pieceBytes, m_offer.bytes.size() - m_sent);
    const auto units = static_cast<std::uint32_t>(length / (m_offer.form.format / 8));
    xcb_change_property(m_link.connection(), XCB_PROP_MODE_REPLACE, m_reader, m_property, m_offer.form.type,
                        m_offer.form.format, units, m_offer.bytes.constData() + m_sent);
    m_sent += length;
    m_done = length == 0;
    return m_done;
}

} // namespace tulvane
