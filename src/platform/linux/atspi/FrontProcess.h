#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

namespace tulvane {

/// The process of the program that has the keyboard focus, by what the desktop says; nothing where it cannot
/// tell. Programs themselves may take half a second to notice that they are no longer in front.
using FrontProcess = std::function<std::optional<quint32>()>;

} // namespace tulvane
