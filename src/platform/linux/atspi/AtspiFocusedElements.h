#pragma once

#include <platform/linux/atspi/FrontProcess.h>
#include <ports/FocusedElement.h>

#include <QString>

#include <memory>

namespace tulvane {

/// The focused element of the program in front, over the accessibility bus of the desktop. Main thread, which
/// it never blocks. Programs that show nothing there have no focused element.
class AtspiFocusedElements final : public FocusedElements {
public:
    /// The bus is asked for at the session bus of this address, at the first question; where the address is
    /// empty there is none. Where `front` is given, no other program than that one is looked at or written
    /// into; otherwise the programs' own word is all there is. It is called on the
    /// main thread, and no more once this has gone.
    explicit AtspiFocusedElements(QString sessionBusAddress, FrontProcess front = {});
    AtspiFocusedElements(const AtspiFocusedElements&) = delete;
    AtspiFocusedElements& operator=(const AtspiFocusedElements&) = delete;
    /// Every question that is still open, of an element too, is answered with "no" or nothing.
    ~AtspiFocusedElements() override;

    /// Answers within the limits of FocusSearch, the first time after the bus has been reached.
    [[nodiscard]] QFuture<std::shared_ptr<FocusedElement>> focused() override;

    /// The address of the session bus that the user's programs share; empty where there is none. Starts none.
    [[nodiscard]] static QString usersSessionBus();
    /// Whether the session bus of this address has an accessibility bus to offer. Blocks for a moment; starts
    /// nothing.
    [[nodiscard]] static bool isOffered(const QString& sessionBusAddress);

private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;
};

} // namespace tulvane
