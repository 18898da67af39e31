#pragma once

#include <ports/StatusItem.h>

#include <functional>
#include <utility>

namespace tulvane {

/// A line of the menu by its kind; an action has `activate`, which the event loop calls.
[[nodiscard]] inline MenuEntry menuLine(MenuEntry::Kind kind, const char* name, const QString& text,
                                        std::function<void()> activate = {})
{
    return {.kind = kind, .name = QString::fromLatin1(name), .text = text, .activate = std::move(activate)};
}

[[nodiscard]] inline MenuEntry menuSeparator(const char* name)
{
    return menuLine(MenuEntry::Kind::separator, name, {});
}

} // namespace tulvane
