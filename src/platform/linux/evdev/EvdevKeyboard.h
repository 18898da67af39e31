#pragma once

#include <QSocketNotifier>
#include <QString>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace tulvane {

/// One of the kernel's keyboards, read beside its other readers, which receive every key as before. Main
/// thread.
class EvdevKeyboard final {
public:
    enum class Opened { yes, denied, noKeyboard };
    /// A key by the kernel's number went down or up, so long ago. Repeats are none.
    using Changed = std::function<void(quint16 key, bool isDown, std::chrono::milliseconds age)>;

    /// `gone` is called once when the device is no longer there; the object may be destroyed in it.
    static Opened open(const QString& path, Changed changed, std::function<void()> gone,
                       std::unique_ptr<EvdevKeyboard>& keyboard);
    /// What `open` would answer. Reads nothing.
    [[nodiscard]] static Opened look(const QString& path);
    EvdevKeyboard(const EvdevKeyboard&) = delete;
    EvdevKeyboard& operator=(const EvdevKeyboard&) = delete;
    ~EvdevKeyboard();

    [[nodiscard]] bool isHeld(quint16 key) const { return has(m_held, key); }
    [[nodiscard]] bool canPress(quint16 key) const { return has(m_keys, key); }
    [[nodiscard]] bool isCapsLockOn() const;

private:
    static constexpr std::size_t keyBytes = 96; // the kernel counts keys to 767
    using Keys = std::array<std::uint8_t, keyBytes>;

    explicit EvdevKeyboard(int file) : m_file(file), m_readable(file, QSocketNotifier::Read) {}
    [[nodiscard]] static bool has(const Keys& keys, quint16 key);
    void read();
    void note(quint16 key, bool isDown, std::chrono::milliseconds age);
    /// After the kernel has dropped events: what is held now.
    void catchUp();

    /// Its keys, where the file is a keyboard's.
    [[nodiscard]] static bool readKeys(int file, Keys& keys);

    int m_file;
    Keys m_keys{};
    Keys m_held{};
    Changed m_changed;
    std::function<void()> m_gone;
    QSocketNotifier m_readable;
};

} // namespace tulvane
