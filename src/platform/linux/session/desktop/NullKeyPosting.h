#pragma once

#include <ports/KeyPosting.h>

namespace tulvane {

/// The key posting of a desktop that lets no program post keys. Main thread.
class NullKeyPosting final : public KeyPosting {
public:
    [[nodiscard]] QFuture<bool> paste(const PasteTarget& /*target*/) override
    {
        return QtFuture::makeReadyFuture(false);
    }
    [[nodiscard]] QFuture<bool> typeSpaces(int /*count*/) override
    {
        return QtFuture::makeReadyFuture(false);
    }
};

} // namespace tulvane
