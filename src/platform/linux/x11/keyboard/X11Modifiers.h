#pragma once

#include <platform/linux/x11/keyboard/KeyboardLayout.h>

#include <QtGlobal>

#include <optional>
#include <vector>

namespace tulvane {

/// Which modifier bits of the X server are which of ours. The server assigns all but Shift, Lock and Control
/// freely.
struct X11Modifiers {
    quint16 alt = 0; ///< 0 where no key of the keyboard sets it; likewise the others
    quint16 super = 0;

    [[nodiscard]] friend bool operator==(const X11Modifiers&, const X11Modifiers&) = default;

    [[nodiscard]] static X11Modifiers read(X11Connection& connection, const KeyboardLayout& layout);

    /// The bits of a Carbon mask; none where the keyboard lacks one of the modifiers, or a bit is no modifier
    /// of ours.
    [[nodiscard]] std::optional<quint16> mask(quint32 carbonModifiers) const;
    /// The Carbon mask of a state; locks and bits that are none of ours fall away.
    [[nodiscard]] quint32 carbonModifiers(quint32 state) const;
    /// Every state of the modifiers that are none of ours, which a grab must name one by one.
    [[nodiscard]] std::vector<quint16> lockVariants() const;
    /// A state without the modifiers that are none of ours.
    [[nodiscard]] quint16 withoutLocks(quint32 state) const;

private:
    [[nodiscard]] quint16 ours() const;
};

} // namespace tulvane
