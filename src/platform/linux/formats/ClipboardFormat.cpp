#include <platform/linux/formats/ClipboardFormat.h>

#include <QSet>

#include <algorithm>

namespace tulvane {

bool isContentTarget(const QString& name)
{
    static const QSet<QString> others{
        QStringLiteral("TARGETS"),         QStringLiteral("MULTIPLE"),
        QStringLiteral("TIMESTAMP"),       QStringLiteral("SAVE_TARGETS"),
        QStringLiteral("DELETE"),          QStringLiteral("INSERT_SELECTION"),
        QStringLiteral("INSERT_PROPERTY"), QStringLiteral("application/x-qt-image"),
    };
    return !name.isEmpty() && !others.contains(name);
}

bool isTextTarget(const QString& name)
{
    static const QSet<QString> texts{
        QStringLiteral("UTF8_STRING"), QStringLiteral("STRING"),
        QStringLiteral("TEXT"),        QStringLiteral("COMPOUND_TEXT"),
        QStringLiteral("text/plain"),  QStringLiteral("text/plain;charset=utf-8")};
    return texts.contains(name);
}

FormatWorth worthOf(const QString& target)
{
    if (isTextTarget(target))
        return FormatWorth::text;
    if (target == u"text/html")
        return FormatWorth::html;
    if (target == u"text/uri-list")
        return FormatWorth::files;
    if (target == u"image/png")
        return FormatWorth::picture;
    // Toolkits offer one picture in every encoding that they can write, and write each when it is asked for.
    const bool isEncoding = target.startsWith(u"image/") && target != u"image/svg+xml";
    return isEncoding || target == u"PIXMAP" || target == u"BITMAP" ? FormatWorth::redundant
                                                                    : FormatWorth::own;
}

bool isLatin1(const QString& text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.unicode() < 0x100; });
}

} // namespace tulvane
