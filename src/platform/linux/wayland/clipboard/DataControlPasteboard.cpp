#include <platform/linux/wayland/clipboard/DataControlPasteboard.h>

namespace tulvane {

QFuture<PasteboardContents> DataControlPasteboard::contents()
{
    return m_clipboard.ask<QFuture<PasteboardContents>>(
        m_which, QtFuture::makeReadyFuture(PasteboardContents{{}, true}),
        [](DataControlSelection& selection) { return selection.contents(); });
}

qint64 DataControlPasteboard::changeCount()
{
    return m_clipboard.ask<qint64>(m_which, 0,
                                   [](DataControlSelection& selection) { return selection.changeCount(); });
}

qint64 DataControlPasteboard::ownChangeCount() const
{
    return m_clipboard.ask<qint64>(
        m_which, 0, [](DataControlSelection& selection) { return selection.ownChangeCount(); });
}

bool DataControlPasteboard::replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target)
{
    return put(items, target, std::nullopt);
}

bool DataControlPasteboard::put(const QList<PasteboardItem>& items, const PasteTarget& target,
                                DataControlSelection::OnlyAt count)
{
    const FrontProgram program = m_programOf(target);
    const PipeHolders::Target reader{program.process, program.isX11, m_clipboard.compositor()};
    return m_clipboard.ask<bool>(
        m_which, false, [&](DataControlSelection& selection) { return selection.put(items, reader, count); });
}

void DataControlPasteboard::clear()
{
    (void)m_clipboard.ask<bool>(
        m_which, false, [](DataControlSelection& selection) { return selection.clear(std::nullopt); });
}

bool DataControlPasteboard::replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count)
{
    if (!items.isEmpty())
        return put(items, {}, count);
    return m_clipboard.ask<bool>(m_which, false,
                                 [&](DataControlSelection& selection) { return selection.clear(count); });
}

Pasteboard::Reading DataControlPasteboard::reading() const
{
    const bool isRead = m_clipboard.ask<bool>(
        m_which, false, [](DataControlSelection& selection) { return selection.isRead(); });
    return isRead ? Reading::read : Reading::unread;
}

void DataControlPasteboard::readAhead()
{
    (void)m_clipboard.ask<bool>(m_which, false, [](DataControlSelection& selection) {
        selection.readAhead();
        return true;
    });
}

void DataControlPasteboard::expectReader()
{
    (void)m_clipboard.ask<bool>(m_which, false, [](DataControlSelection& selection) {
        selection.expectReader();
        return true;
    });
}

void DataControlPasteboard::tellActivity()
{
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            if (m_activity)
                m_activity();
        },
        Qt::QueuedConnection);
}

} // namespace tulvane
