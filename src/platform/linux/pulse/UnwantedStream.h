#pragma once

#include <pulse/stream.h>

namespace tulvane {

/// The state callback of a stream that is no longer waited for: a server that answers too late would
/// otherwise keep it, and with it a microphone, for no one. libpulse holds the stream itself as long as it is
/// being made. On the audio thread.
inline void closeWhenOpen(pa_stream* stream, void*)
{
    if (pa_stream_get_state(stream) == PA_STREAM_READY)
        pa_stream_disconnect(stream);
}

} // namespace tulvane
