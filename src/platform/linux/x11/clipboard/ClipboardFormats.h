#pragma once

#include <platform/linux/formats/ClipboardFormat.h>
#include <platform/linux/x11/connection/X11Connection.h>
#include <ports/PasteboardItem.h>

#include <QList>

namespace tulvane {

/// The form in which a target's data travels.
struct TargetForm {
    xcb_atom_t type = noAtom;
    std::uint8_t format = 8; ///< bits of a unit
};

/// The forms of targets by their names, as they were last seen, so that what is put back has the form in
/// which it came.
using TargetForms = QHash<QString, TargetForm>;

/// One target that we offer, with its data. 32-bit units are kept as the X library has them, as longs of the
/// wire's size.
struct TargetOffer {
    xcb_atom_t target = noAtom;
    TargetForm form;
    QByteArray bytes;
};

/// Every target under which these items are offered; plain text under all the names that programs ask for.
[[nodiscard]] QList<TargetOffer> offersFor(X11Connection& link, const QList<PasteboardItem>& items,
                                           const TargetForms& forms);

} // namespace tulvane
