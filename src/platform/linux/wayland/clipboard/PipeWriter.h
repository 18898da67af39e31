#pragma once

#include <platform/linux/wayland/clipboard/FileDescriptor.h>

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>

namespace tulvane {

/// Writes bytes into a pipe as fast as its reader takes them, from the event loop of the thread that made it,
/// and closes it. Dropping it ends it. That thread has SIGPIPE blocked.
class PipeWriter final {
public:
    /// Called once, later or from within `begin()`: whether the pipe took all of it. The writer may be
    /// dropped from within it.
    using Done = std::function<void(bool isWhole)>;

    PipeWriter(FileDescriptor end, QByteArray bytes);
    PipeWriter(const PipeWriter&) = delete;
    PipeWriter& operator=(const PipeWriter&) = delete;
    ~PipeWriter() = default;

    void begin(Done done)
    {
        m_done = std::move(done);
        write();
    }

private:
    void write();
    void finish(bool isWhole);

    FileDescriptor m_end;
    QSocketNotifier m_writable;
    QByteArray m_bytes;
    qsizetype m_written = 0;
    Done m_done;
};

} // namespace tulvane
