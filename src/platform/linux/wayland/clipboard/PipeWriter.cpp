#include <platform/linux/wayland/clipboard/PipeWriter.h>

#include <fcntl.h>

#include <cerrno>

namespace tulvane {

PipeWriter::PipeWriter(FileDescriptor end, QByteArray bytes)
    : m_end(std::move(end)),
      m_writable(m_end.get(), QSocketNotifier::Write),
      m_bytes(std::move(bytes))
{
    m_writable.setEnabled(false);
    fcntl(m_end.get(), F_SETFL, fcntl(m_end.get(), F_GETFL) | O_NONBLOCK);
    QObject::connect(&m_writable, &QSocketNotifier::activated, &m_writable, [this] { write(); });
}

void PipeWriter::write()
{
    while (m_written < m_bytes.size()) {
        const auto left = static_cast<std::size_t>(m_bytes.size() - m_written);
        const ssize_t size = ::write(m_end.get(), m_bytes.constData() + m_written, left);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0 && errno == EAGAIN) {
            m_writable.setEnabled(true);
            return;
        }
        if (size < 0) {
            finish(false);
            return;
        }
        m_written += size;
    }
    finish(true);
}

void PipeWriter::finish(bool isWhole)
{
    m_writable.setEnabled(false);
    m_end = FileDescriptor();
    const Done done = std::exchange(m_done, nullptr);
    if (done)
        done(isWhole);
}

} // namespace tulvane
