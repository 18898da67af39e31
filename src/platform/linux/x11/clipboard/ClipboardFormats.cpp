#include <platform/linux/x11/clipboard/ClipboardFormats.h>

namespace tulvane {

namespace {

const auto utf8String = QStringLiteral("UTF8_STRING");
const auto latinString = QStringLiteral("STRING");

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
