#pragma once

#include <QtGlobal>

#include <chrono>

namespace tulvane::transfers {

/// How patient and how careful an HTTP download is.
struct HttpOptions {
    /// Without a byte for so long, connecting included, the server counts as gone.
    std::chrono::milliseconds stallTimeout{60'000};
    /// The longest a download may take altogether.
    std::chrono::milliseconds totalTimeout{21'600'000};
    /// How often in a row a broken connection is tried again without a byte of progress in between.
    int retries = 0;
    /// The pause before the first such retry; it doubles with each.
    std::chrono::milliseconds retryPause{1'000};
    /// Bytes that stay free on the disk: a full file system breaks other programs.
    qint64 reserve = 64LL * 1024 * 1024;
};

} // namespace tulvane::transfers
