#pragma once

#include <platform/linux/gnome/IBusCommit.h>
#include <ports/FocusedElement.h>

#include <memory>

namespace tulvane {

/// Fields that are found over accessibility and written into by the input method: exact in every toolkit, and
/// under any modifier that the user holds down. Where no field is known there is none, since a text that is
/// committed without one goes nowhere. Main thread.
class IBusElements final : public FocusedElements {
public:
    IBusElements(std::shared_ptr<FocusedElements> found, std::shared_ptr<IBusCommit> commit)
        : m_found(std::move(found)),
          m_commit(std::move(commit))
    {
    }

    [[nodiscard]] QFuture<std::shared_ptr<FocusedElement>> focused() override;

private:
    std::shared_ptr<FocusedElements> m_found;
    std::shared_ptr<IBusCommit> m_commit;
};

} // namespace tulvane
