#include <platform/linux/x11/clipboard/ClipboardFormats.h>

#include <QSet>

#include <algorithm>

namespace tulvane {

namespace {

const auto utf8String = QStringLiteral("UTF8_STRING");
const auto latinString = QStringLiteral("STRING");

bool isLatin1(const QString& text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.unicode() < 0x100; });
}

QList<TargetOffer> textOffers(X11Connection& link, const QByteArray& utf8)
{
    QList<TargetOffer> offers;
    const auto offer = [&](const QString& target, const QString& type, const QByteArray& bytes) {
        offers.append({link.atom(target), {link.atom(type), 8}, bytes});
    };
    offer(utf8String, utf8String, utf8);
    for (const QString& name : {QStringLiteral("text/plain;charset=utf-8"), QStringLiteral("text/plain")})
        offer(name, name, utf8);
    offer(QStringLiteral("TEXT"), utf8String, utf8);
    // STRING is Latin-1 by definition; a text that does not fit is better not read than read wrong.
    const QString text = QString::fromUtf8(utf8);
    if (isLatin1(text))
        offer(latinString, latinString, text.toLatin1());
    return offers;
}

TargetForm usualForm(X11Connection& link, const QString& target)
{
    return {link.atom(target == u"TEXT" ? utf8String : target), 8};
}

} // namespace

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
    static const QSet<QString> texts{utf8String,
                                     latinString,
                                     QStringLiteral("TEXT"),
                                     QStringLiteral("COMPOUND_TEXT"),
                                     QStringLiteral("text/plain"),
                                     QStringLiteral("text/plain;charset=utf-8")};
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

QList<TargetOffer> offersFor(X11Connection& link, const QList<PasteboardItem>& items,
                             const TargetForms& forms)
{
    QList<TargetOffer> offers;
    for (const PasteboardItem& item : items) {
        for (auto data = item.dataByType.cbegin(); data != item.dataByType.cend(); ++data) {
            if (data.key() == PasteboardItem::plainTextType) {
                offers.append(textOffers(link, data.value()));
                continue;
            }
            const auto known = forms.constFind(data.key());
            offers.append({link.atom(data.key()),
                           known != forms.cend() ? *known : usualForm(link, data.key()), data.value()});
        }
    }
    return offers;
}

} // namespace tulvane
