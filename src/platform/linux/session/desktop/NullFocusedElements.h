#pragma once

#include <ports/FocusedElement.h>

namespace tulvane {

/// Of a desktop that does not tell which program has the focus. Main thread.
class NullFocusedElements final : public FocusedElements {
public:
    [[nodiscard]] QFuture<std::shared_ptr<FocusedElement>> focused() override
    {
        return QtFuture::makeReadyFuture(std::shared_ptr<FocusedElement>());
    }
};

} // namespace tulvane
