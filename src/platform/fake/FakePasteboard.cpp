#include <platform/fake/FakePasteboard.h>

#include <utility>

namespace tulvane {

QFuture<PasteboardContents> FakePasteboard::contents()
{
    note(QStringLiteral("contents"));
    QPromise<PasteboardContents> promise;
    promise.start();
    auto future = promise.future();
    m_waiting.push_back(std::move(promise));
    if (!m_held)
        answerContents();
    return future;
}

void FakePasteboard::answerContents()
{
    for (QPromise<PasteboardContents>& promise : std::exchange(m_waiting, {})) {
        promise.addResult(PasteboardContents{m_silent ? QList<PasteboardItem>() : m_items, m_complete});
        promise.finish();
    }
}

bool FakePasteboard::replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target)
{
    m_reader = target;
    ++m_ownChanges;
    note(QStringLiteral("write ") +
         (items.isEmpty() ? QString() : items.first().plainText().value_or(QString())));
    changed(m_refuses ? QList<PasteboardItem>() : items);
    m_ownChangeCount = m_changeCount;
    m_reading = m_tellsReads ? Reading::unread : Reading::untold;
    if (afterWrite)
        afterWrite();
    return !m_refuses;
}

void FakePasteboard::clear()
{
    ++m_ownChanges;
    note(QStringLiteral("clear"));
    changed({});
    m_ownChangeCount = m_changeCount;
}

bool FakePasteboard::replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count)
{
    if (m_changeCount != count)
        return false;
    if (!items.isEmpty())
        return replace(items);
    clear();
    return true;
}

void FakePasteboard::otherProgramWrites(const QList<PasteboardItem>& items)
{
    changed(items);
    if (m_handler)
        m_handler();
}

void FakePasteboard::frontProgramReads()
{
    if (m_tellsReads)
        m_reading = Reading::read;
    if (m_handler)
        m_handler();
}

QString FakePasteboard::text() const
{
    return m_items.size() == 1 ? m_items.first().plainText().value_or(QString()) : QString();
}

void FakePasteboard::note(const QString& operation) const
{
    if (journal)
        journal(operation);
}

void FakePasteboard::changed(const QList<PasteboardItem>& items)
{
    m_items = items;
    ++m_changeCount;
}

} // namespace tulvane
