#pragma once

#include <platform/linux/wayland/clipboard/FileDescriptor.h>

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>

namespace tulvane {

/// Reads a pipe to its end, a piece at a time, from the event loop of the thread that made it. Dropping it
/// ends it.
class PipeReader final {
public:
    struct Handlers {
        std::function<void(qsizetype total)> progressed; ///< something has come; so many bytes by now
        std::function<void(const QByteArray& bytes)>
            ended; ///< once; the reader may be dropped from within it
    };

    PipeReader(FileDescriptor end, Handlers handlers);
    PipeReader(const PipeReader&) = delete;
    PipeReader& operator=(const PipeReader&) = delete;
    ~PipeReader() = default;

private:
    void read();

    FileDescriptor m_end;
    QSocketNotifier m_readable;
    Handlers m_handlers;
    QByteArray m_bytes;
};

} // namespace tulvane
