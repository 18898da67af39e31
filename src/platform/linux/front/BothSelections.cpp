#include <platform/linux/front/BothSelections.h>

namespace tulvane {

QFuture<PasteboardContents> BothSelections::contents()
{
    m_selected = m_primary.contents();
    return m_clipboard.contents();
}

bool BothSelections::replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target)
{
    m_primary.replaceFor(items, target);
    m_selectedCount = m_primary.ownChangeCount();
    return m_clipboard.replaceFor(items, target);
}

void BothSelections::clear()
{
    m_primary.clear();
    m_clipboard.clear();
}

bool BothSelections::replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count)
{
    const auto selected = std::exchange(m_selected, std::nullopt);
    // One that has not come by now is not waited for.
    const bool isKnown = selected && selected->isFinished() && selected->result().complete;
    m_primary.replaceUnlessChanged(isKnown ? selected->result().items : QList<PasteboardItem>(),
                                   m_selectedCount);
    return m_clipboard.replaceUnlessChanged(items, count);
}

Pasteboard::Reading BothSelections::reading() const
{
    const bool isRead = m_clipboard.reading() == Reading::read || m_primary.reading() == Reading::read;
    return isRead ? Reading::read : Reading::unread;
}

void BothSelections::setActivityHandler(std::function<void()> handler)
{
    m_primary.setActivityHandler(handler);
    m_clipboard.setActivityHandler(std::move(handler));
}

} // namespace tulvane
