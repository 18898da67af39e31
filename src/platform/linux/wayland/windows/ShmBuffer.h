#pragma once

#include <platform/linux/wayland/connection/WaylandConnection.h>

#include <QImage>
#include <QSize>

#include <memory>

namespace tulvane {

/// Memory that the compositor reads a picture from. Main thread.
class ShmBuffer final {
public:
    /// Null where there is no such memory. `shm` outlives it.
    [[nodiscard]] static std::unique_ptr<ShmBuffer> make(wl_shm* shm, QSize size);
    ShmBuffer(const ShmBuffer&) = delete;
    ShmBuffer& operator=(const ShmBuffer&) = delete;
    ~ShmBuffer();

    [[nodiscard]] wl_buffer* object() const { return m_object; }
    [[nodiscard]] QSize size() const { return m_size; }
    /// To draw into, while the compositor does not read it.
    [[nodiscard]] QImage image();
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    /// The compositor reads it until it releases it.
    void handOver() { m_isBusy = true; }

private:
    ShmBuffer(wl_buffer* object, void* bytes, QSize size);

    wl_buffer* m_object;
    void* m_bytes;
    QSize m_size;
    bool m_isBusy = false;
};

} // namespace tulvane
