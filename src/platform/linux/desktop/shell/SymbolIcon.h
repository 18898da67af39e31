#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

namespace tulvane {

/// The two colours of a status icon: its own, and that of the thin rim that keeps it readable on a bar of its
/// own colour, since no desktop tells what colour its bar has.
struct IconTone {
    QColor symbol;
    QColor rim;

    [[nodiscard]] friend bool operator==(const IconTone&, const IconTone&) = default;
};

/// The likeliest tone. Bars have the colours of the desktop's theme (`themeIsDark`), but for those desktops
/// whose bar is dark whatever the theme; `desktops` is the session's list of names ("ubuntu", "GNOME").
[[nodiscard]] IconTone toneFor(const QStringList& desktops, bool themeIsDark);

/// An icon that draws the symbol in `file` (an SVG whose opaque parts count) as sharp as the place it gets.
/// Main thread.
[[nodiscard]] QIcon symbolIcon(const QString& file, const IconTone& tone);

} // namespace tulvane
