#pragma once

#include <ports/KeyPosting.h>

namespace tulvane {

/// The key posting of a desktop that lets no program post keys. Main thread.
class NullKeyPosting final : public KeyPosting {
public:
    [[nodiscard]] QFuture<bool> post(int /*keyCode*/, quint32 /*flags*/) override
    {
        return QtFuture::makeReadyFuture(false);
    }
};

} // namespace tulvane
