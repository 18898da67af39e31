#pragma once

#include <cstddef>

namespace tulvane {

/// Takes everything that a recording stream has ready. `stream` has what libpulse's streams have:
/// `readableSize()`, `peek(data, bytes)`, which is false on a failure, and `drop()`. `take(data, bytes)` gets
/// each fragment; no data but a length is a hole, which is dropped as any other fragment, or the stream would
/// stand still at it for ever.
template <class Stream, class Take>
void takeFragments(Stream&& stream, Take&& take)
{
    while (stream.readableSize() > 0) {
        const void* data = nullptr;
        std::size_t bytes = 0;
        if (!stream.peek(&data, &bytes) || bytes == 0)
            return;
        take(data, bytes);
        stream.drop();
    }
}

} // namespace tulvane
