#pragma once

#include <platform/linux/atspi/AccessibilityBus.h>
#include <platform/linux/atspi/FocusSearch.h>
#include <ports/FocusedElement.h>

#include <memory>
#include <utility>

namespace tulvane {

/// An element of another program, asked over the accessibility bus. It may outlive its finder.
class AtspiFocusedElement final : public FocusedElement {
public:
    AtspiFocusedElement(std::shared_ptr<AccessibilityBus> bus, FocusedAccessible place)
        : m_bus(std::move(bus)),
          m_place(std::move(place))
    {
    }

    [[nodiscard]] QFuture<bool> settable() override;
    [[nodiscard]] QFuture<std::optional<QString>> role() override;
    /// Refused too when the element is no longer the focused one of the window in front.
    [[nodiscard]] QFuture<bool> setSelectedText(const QString& text) override;
    [[nodiscard]] bool mayStillArrive() const override { return *m_mayStillArrive; }
    [[nodiscard]] QFuture<std::optional<QString>> value() override;

private:
    std::shared_ptr<AccessibilityBus> m_bus;
    FocusedAccessible m_place;
    std::shared_ptr<bool> m_mayStillArrive = std::make_shared<bool>(false); ///< of the last write
};

} // namespace tulvane
