#pragma once

#include <platform/linux/x11/clipboard/ClipboardFormats.h>

namespace tulvane {

/// Hands over data that is too long for one property, piece by piece, each when the reader has taken the one
/// before. Main thread.
class IncrementalTransfer final {
public:
    /// More than this goes in pieces, and each piece is this long at most. In bytes; a multiple of four.
    static constexpr qsizetype pieceBytes = 256 * 1024;

    /// `offered`, the bytes, are shared, not copied: they live on when the pasteboard has other content.
    IncrementalTransfer(X11Connection& link, xcb_window_t reader, xcb_atom_t property,
                        const TargetOffer& offered);

    /// Announces the transfer in the property.
    void begin();

    /// The reader has taken what stood in the property. True when that was the last of the data.
    [[nodiscard]] bool advance();

    [[nodiscard]] xcb_window_t reader() const { return m_reader; }
    [[nodiscard]] xcb_atom_t property() const { return m_property; }
    /// After the end mark, too, has been written.
    [[nodiscard]] bool isDone() const { return m_done; }

private:
    X11Connection& m_link;
    xcb_window_t m_reader;
    xcb_atom_t m_property;
    TargetOffer m_offer;
    qsizetype m_sent = 0;
    bool m_done = false;
};

} // namespace tulvane
