#include <insertion/PasteboardSnapshot.h>

#include <QCoroFuture>

#include <algorithm>
#include <iterator>

namespace tulvane {

namespace {

QString withPlainLineBreaks(QString text)
{
    return text.replace(QLatin1StringView("\r\n"), QLatin1StringView("\n"));
}

} // namespace

QCoro::Task<PasteboardSnapshot> PasteboardSnapshot::capture(Pasteboard& pasteboard)
{
    const PasteboardContents contents = co_await pasteboard.contents();
    co_return PasteboardSnapshot{contents.items, pasteboard.changeCount(), contents.complete};
}

bool PasteboardSnapshot::isText(const QString& text) const
{
    const auto own = items.size() == 1 ? items.first().plainText() : std::nullopt;
    return own && withPlainLineBreaks(*own) == withPlainLineBreaks(text);
}

bool PasteboardSnapshot::restore(Pasteboard& pasteboard, qint64 count) const
{
    QList<Item> filled;
    std::ranges::copy_if(items, std::back_inserter(filled),
                         [](const Item& item) { return !item.dataByType.isEmpty(); });
    return pasteboard.replaceUnlessChanged(filled, count) && !filled.isEmpty();
}

} // namespace tulvane
