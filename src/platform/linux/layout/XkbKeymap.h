#pragma once

#include <ports/GlobalHotkeys.h>
#include <ports/VirtualKeys.h>

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

struct xkb_keymap;

namespace tulvane {

/// What the keys of a keyboard type: a keymap as Wayland compositors and the kernel's keyboards use it. A
/// value; copies share it. Any thread.
class XkbKeymap final {
public:
    /// By the names that desktops store: "no", "us"; several, separated by commas, where the user changes
    /// between them. The system's default where the layout is empty. None where there is no such layout.
    [[nodiscard]] static std::optional<XkbKeymap> fromNames(const QString& layout,
                                                            const QString& variant = {});
    /// Of a keymap as a compositor hands it to its clients.
    [[nodiscard]] static std::optional<XkbKeymap> fromText(const QByteArray& text);

    /// What stands on a printing key in the first layout; empty where that is nothing to show.
    [[nodiscard]] QString label(const VirtualKey& key) const;
    /// The character that a printing key types in the first layout, without Shift or with it; 0 for none.
    [[nodiscard]] char32_t character(const VirtualKey& key, bool withShift) const;
    /// The position that types a keysym, by its name or, for a single character, by that.
    [[nodiscard]] std::optional<quint32> keyForKeysym(const QString& name) const;
    /// The keysym's name ("Page_Up", "aring") of a key without Shift in the first layout; empty for none.
    [[nodiscard]] QString keysymName(const VirtualKey& key) const;

private:
    explicit XkbKeymap(xkb_keymap* keymap);
    [[nodiscard]] quint32 keysym(const VirtualKey& key, quint32 group, quint32 level) const;

    std::shared_ptr<xkb_keymap> m_keymap;
};

/// The combination of a key event in a window of ours on Wayland or XWayland: none for a key that cannot be
/// stored.
[[nodiscard]] std::optional<KeyCombination> combinationOfXkbKey(const NativeKey& key);

} // namespace tulvane
