#pragma once

#include <platform/linux/wayland/connection/WaylandConnection.h>
#include <ports/GlobalHotkeys.h>
#include <ports/VirtualKeys.h>

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

struct xkb_context;
struct xkb_keymap;

namespace tulvane {

/// The keymap of the seat's keyboard: what its keys type. Without a keyboard, or before one is there, a US
/// one serves. Main thread.
class WaylandKeymap final : public QObject {
    Q_OBJECT

public:
    explicit WaylandKeymap(std::shared_ptr<WaylandConnection> connection);
    Q_DISABLE_COPY_MOVE(WaylandKeymap)
    ~WaylandKeymap() override;

    /// What stands on a printing key in the first layout; empty where that is nothing to show.
    [[nodiscard]] QString label(const VirtualKey& key) const;
    /// The position that types a keysym, by its name or, for a single character, by that.
    [[nodiscard]] std::optional<quint32> keyForKeysym(const QString& name) const;
    /// Of a key event's scan code and modifiers, as the toolkit's own Wayland windows receive them.
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const;
    /// The place that a keymap's code is of.
    [[nodiscard]] static std::optional<quint32> keyOfCode(quint32 keycode);
    [[nodiscard]] static quint32 codeOf(const VirtualKey& key);

Q_SIGNALS:
    /// The keys type something else now.
    void changed();

private:
    void setCapabilities(bool hasKeyboard);
    void setKeymap(int file, std::uint32_t size);
    [[nodiscard]] quint32 keysym(quint32 keycode, quint32 layout, quint32 level) const;

    std::shared_ptr<WaylandConnection> m_connection;
    wl_seat* m_seat;
    wl_keyboard* m_keyboard = nullptr;
    std::unique_ptr<xkb_context, void (*)(xkb_context*)> m_context;
    std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> m_keymap;
    QByteArray m_text; ///< of the keymap
    QByteArray m_usText;
};

} // namespace tulvane
