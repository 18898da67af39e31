#pragma once

#include <QString>

namespace tulvane {

// What lies on a clipboard, by the names that X11 and Wayland share: selection targets and media types.

/// Whether a target is content. The others tell about the selection, or make its owner do something.
[[nodiscard]] bool isContentTarget(const QString& name);

/// The order in which formats are saved: what a program most likely pastes comes first, so that an owner that
/// is slow or stops answering costs the least.
enum class FormatWorth { text, html, files, picture, own, redundant };

[[nodiscard]] FormatWorth worthOf(const QString& target);

/// Whether a program that reads this target reads text.
[[nodiscard]] bool isTextTarget(const QString& name);

/// Whether the target STRING, which is Latin-1 by definition, can hold the text.
[[nodiscard]] bool isLatin1(const QString& text);

} // namespace tulvane
