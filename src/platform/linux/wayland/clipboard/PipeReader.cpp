#include <platform/linux/wayland/clipboard/PipeReader.h>

#include <fcntl.h>

#include <array>
#include <cerrno>

namespace tulvane {

namespace {

constexpr std::size_t pieceSize = 64UL * 1024;

} // namespace

PipeReader::PipeReader(FileDescriptor end, Handlers handlers)
    : m_end(std::move(end)),
      m_readable(m_end.get(), QSocketNotifier::Read),
      m_handlers(std::move(handlers))
{
    fcntl(m_end.get(), F_SETFL, fcntl(m_end.get(), F_GETFL) | O_NONBLOCK);
    QObject::connect(&m_readable, &QSocketNotifier::activated, &m_readable, [this] { read(); });
}

void PipeReader::read()
{
    static thread_local std::array<char, pieceSize> piece;
    const ssize_t size = ::read(m_end.get(), piece.data(), piece.size());
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (size > 0) {
        m_bytes.append(piece.data(), size);
        m_handlers.progressed(m_bytes.size());
        return;
    }
    m_readable.setEnabled(false);
    const auto ended = m_handlers.ended;
    ended(m_bytes);
}

} // namespace tulvane
