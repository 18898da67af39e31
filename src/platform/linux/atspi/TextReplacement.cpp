#include <base/Log.h>
#include <platform/linux/atspi/TextReplacement.h>

namespace tulvane {

QCoro::Task<bool> TextReplacement::run()
{
    const auto content = co_await m_field.content();
    if (m_text.isEmpty() || !content)
        co_return false;
    m_before = *content;
    m_start = indexOf(m_before.unit, m_before.text, m_before.selection.first).value_or(0);
    m_end = indexOf(m_before.unit, m_before.text, m_before.selection.second).value_or(0);
    const auto length = co_await m_field.insertedLength(m_text);
    if (!length)
        co_return false;
    const bool mayWrite = co_await m_mayWrite();
    if (!mayWrite)
        co_return false;
    const std::optional<bool> accepted = co_await m_field.insert(m_before.selection.second, m_text, *length);
    const auto after = co_await changedText(accepted.value_or(true));
    m_mayStillArrive = !accepted && (!after || *after == m_before.text);
    if (!after || m_mayStillArrive)
        co_return accepted.value_or(false);
    co_return co_await finish(TextChange::between(m_before.text, *after, m_start, m_end, m_text), *after);
}

QCoro::Task<std::optional<QString>> TextReplacement::changedText(bool wasAccepted)
{
    auto text = co_await m_field.text();
    for (int step = 0; wasAccepted && text == m_before.text && step < settleSteps; ++step) {
        const auto waited = co_await m_field.bus().link().pause(settleStep);
        if (!waited)
            break;
        text = co_await m_field.text();
    }
    co_return text;
}

QCoro::Task<bool> TextReplacement::finish(TextChange change, QString after)
{
    using Kind = TextChange::Kind;
    bool done = false;
    switch (change.kind) {
    case Kind::nothing:
        break;
    case Kind::inserted:
        done = co_await removeSelection(change.length, after);
        break;
    case Kind::replaced:
        done = co_await placeCaret(m_text.size(), after);
        break;
    case Kind::other:
        // It is there; where the selection is now is unknown, so it stays.
        done = true;
        break;
    case Kind::altered:
        done = co_await takeBack(change.length, after);
        break;
    case Kind::damaged:
        done = co_await putBackText();
        break;
    }
    if (!done)
        qCInfo(lcInsertion, "Accessibility: the element did not take the text");
    co_return done;
}

QCoro::Task<bool> TextReplacement::removeSelection(qsizetype length, QString after)
{
    if (m_before.hasSelection()) {
        const auto [start, end] = m_before.selection;
        const bool removed = co_await m_field.remove(start, end);
        if (!removed)
            co_return co_await takeBack(length, after);
    }
    co_return co_await placeCaret(length, QString(after).remove(m_start, m_end - m_start));
}

QCoro::Task<bool> TextReplacement::placeCaret(qsizetype length, QString written)
{
    const auto unit = co_await m_field.unit(written);
    const int offset = lengthIn(unit.value_or(m_before.unit), written.left(m_start + length));
    // The text is there. A caret before it instead of after it is no reason to write it a second time.
    const bool placed = co_await m_field.setCaret(offset);
    if (!placed)
        qCInfo(lcInsertion, "Accessibility: the caret could not be placed");
    co_return true;
}

QCoro::Task<bool> TextReplacement::takeBack(qsizetype length, QString after)
{
    const QString arrived = after.mid(m_end, length);
    const auto unit = co_await m_field.unit(after);
    if (unit) {
        const int from = m_before.selection.second;
        (void)co_await m_field.remove(from, from + lengthIn(*unit, arrived));
    }
    const auto text = co_await m_field.text();
    if (text == m_before.text)
        co_return co_await putBackSelection();
    if (text && text != after)
        co_return co_await putBackText();
    // Nothing can be removed here. Where our whole text stands it has arrived, beside what was selected.
    co_return arrived.contains(m_text);
}

QCoro::Task<bool> TextReplacement::putBackText()
{
    (void)co_await m_field.setText(m_before.text);
    co_return co_await putBackSelection();
}

QCoro::Task<bool> TextReplacement::putBackSelection()
{
    const auto [start, end] = m_before.selection;
    (void)co_await m_field.setCaret(m_before.caret);
    if (m_before.hasSelection())
        (void)co_await m_field.select(start, end);
    co_return false;
}

} // namespace tulvane
