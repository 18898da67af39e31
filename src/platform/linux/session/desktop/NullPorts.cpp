#include <platform/linux/session/NullHotkeys.h>
#include <platform/linux/session/NullModifierEvents.h>
#include <platform/linux/session/desktop/NullFocusedElements.h>
#include <platform/linux/session/desktop/NullIndicatorPanel.h>
#include <platform/linux/session/desktop/NullKeyPosting.h>
#include <platform/linux/session/desktop/NullKeyboardGrab.h>
#include <platform/linux/session/desktop/NullPasteboards.h>
#include <platform/linux/session/desktop/NullPorts.h>
#include <platform/linux/session/desktop/NullStatusItem.h>

namespace tulvane {

namespace {

/// Fills a desktop's empty places.
class Filling final {
public:
    explicit Filling(Desktop& desktop) : m_desktop(desktop) {}

    template <class NullPort, class Port, class... Arguments>
    void fill(std::shared_ptr<Port>& place, const char* name, const Obstacle& obstacle,
              const Arguments&... arguments)
    {
        if (place)
            return;
        place = std::make_shared<NullPort>(arguments...);
        note(name, obstacle);
    }
    void note(const char* name, const Obstacle& obstacle)
    {
        m_desktop.lacking.append({QString::fromLatin1(name), obstacle});
    }

private:
    Desktop& m_desktop;
};

} // namespace

void fillWithNullPorts(Desktop& desktop, const Session& session)
{
    const KeyObstacles why = session.keyObstacles ? session.keyObstacles() : KeyObstacles();
    Filling filling(desktop);
    filling.fill<NullHotkeys>(desktop.hotkeys, "hot keys", why.watching, why.hotkeys);
    filling.fill<NullModifierEvents>(desktop.modifierEvents, "modifier events", why.watching, why.hotkeys);
    filling.fill<NullPasteboards>(desktop.pasteboards, "pasteboards", why.pasting);
    filling.fill<NullKeyPosting>(desktop.keys, "key posting", why.pasting);
    filling.fill<NullFocusedElements>(desktop.elements, "focused elements", why.pasting);
    filling.fill<NullKeyboardGrab>(desktop.keyboard, "keyboard grab", why.watching);
    filling.fill<NullStatusItem>(desktop.statusItem, "status item", why.pasting);
    if (!desktop.makeIndicatorPanel) {
        desktop.makeIndicatorPanel = [] { return std::make_unique<NullIndicatorPanel>(); };
        filling.note("indicator panel", why.pasting);
    }
}

} // namespace tulvane
