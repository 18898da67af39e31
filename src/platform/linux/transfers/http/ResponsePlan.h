#pragma once

#include <QByteArray>

#include <optional>

namespace tulvane::transfers {

/// The head of one HTTP response, as far as a download cares.
struct ResponseHead {
    int status = 0;
    QByteArray etag;
    QByteArray contentRange;
    QByteArray contentType;
    QByteArray contentEncoding;
    qint64 contentLength = -1;

    /// Takes in one header line ("ETag: ..."); a status line ("HTTP/1.1 200 OK") starts a new head, since
    /// each redirect and each interim response has its own.
    void take(const QByteArray& line);
};

/// What was at hand when the request was made.
struct Held {
    qint64 asked = 0; ///< the byte that was asked for as the first; 0: the whole file
    qint64 bytes = 0; ///< bytes in the partial file; more than `asked` when they are not trusted
    QByteArray etag;  ///< the strong validator that they came with
    qint64 size = -1; ///< bytes of the whole file, when known
    qint64 hint = 0;  ///< bytes that the caller expects of the whole file; 0: unknown

    /// A file of more bytes is not the one that is wanted; nothing beyond is written.
    [[nodiscard]] qint64 most() const;
    /// A response of fewer bytes is not the file, but a message about it.
    [[nodiscard]] qint64 least() const { return hint / 2; }
};

/// What becomes of a response's body.
enum class BodyUse {
    append,       ///< it goes on where the partial file ends
    replace,      ///< it is the whole file, from its beginning
    rewrite,      ///< it is the whole file and the same one: the bytes at hand stay valid meanwhile
    putAside,     ///< it is not the file; the partial file is kept
    holdBack,     ///< `replace` once it has grown long enough to be the file, `putAside` if it ends before
    nothing,      ///< the partial file is complete already
    askFromStart, ///< useless; ask once more, for the whole file
    refuse,       ///< useless, and asking again would bring the same
};

struct ResponsePlan {
    BodyUse use = BodyUse::refuse;
    qint64 size = -1; ///< bytes of the whole file, when this response says so
};

/// "bytes 5-9/10"; `first` and `last` are absent in "bytes */10", `total` in "bytes 5-9/*".
struct ContentRange {
    std::optional<qint64> first;
    std::optional<qint64> last;
    std::optional<qint64> total;

    [[nodiscard]] static std::optional<ContentRange> parse(const QByteArray& text);
};

/// Only a strong validator promises equal bytes; a weak one ("W/...") is as good as none.
[[nodiscard]] bool isStrong(const QByteArray& etag);

/// Decides by the head alone, before a byte of the body is written anywhere.
[[nodiscard]] ResponsePlan planFor(const ResponseHead& head, const Held& held);

} // namespace tulvane::transfers
