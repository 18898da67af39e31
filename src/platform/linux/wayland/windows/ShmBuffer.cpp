#include <platform/linux/wayland/windows/ShmBuffer.h>

#include <sys/mman.h>
#include <unistd.h>

namespace tulvane {

namespace {

constexpr int bytesPerPixel = 4;

std::size_t bytesOf(QSize size)
{
    return static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) * bytesPerPixel;
}

} // namespace

std::unique_ptr<ShmBuffer> ShmBuffer::make(wl_shm* shm, QSize size)
{
    const std::size_t bytes = bytesOf(size);
    const int file = memfd_create("indicator", MFD_CLOEXEC);
    void* memory = MAP_FAILED;
    if (file >= 0 && ftruncate(file, static_cast<off_t>(bytes)) == 0)
        memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    std::unique_ptr<ShmBuffer> buffer;
    if (memory != MAP_FAILED) {
        wl_shm_pool* const pool = wl_shm_create_pool(shm, file, static_cast<std::int32_t>(bytes));
        buffer.reset(
            new ShmBuffer(wl_shm_pool_create_buffer(pool, 0, size.width(), size.height(),
                                                    size.width() * bytesPerPixel, WL_SHM_FORMAT_ARGB8888),
                          memory, size));
        wl_shm_pool_destroy(pool);
    }
    if (file >= 0)
        close(file);
    return buffer;
}

ShmBuffer::ShmBuffer(wl_buffer* object, void* bytes, QSize size)
    : m_object(object),
      m_bytes(bytes),
      m_size(size)
{
    static const wl_buffer_listener events{
        [](void* data, wl_buffer*) { static_cast<ShmBuffer*>(data)->m_isBusy = false; }};
    wl_buffer_add_listener(m_object, &events, this);
}

ShmBuffer::~ShmBuffer()
{
    wl_buffer_destroy(m_object);
    munmap(m_bytes, bytesOf(m_size));
}

QImage ShmBuffer::image()
{
    return QImage(static_cast<uchar*>(m_bytes), m_size.width(), m_size.height(),
                  m_size.width() * bytesPerPixel, QImage::Format_ARGB32_Premultiplied);
}

} // namespace tulvane
