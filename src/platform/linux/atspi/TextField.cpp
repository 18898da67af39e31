#include <platform/linux/atspi/TextField.h>

#include <algorithm>

namespace tulvane {

Awaited<QDBusMessage> TextField::askText(const QString& method, const QVariantList& arguments) const
{
    return m_bus->call(m_element, accessibleInterfaces::text, method, arguments);
}

Awaited<QDBusMessage> TextField::askEditableText(const QString& method, const QVariantList& arguments,
                                                 AccessibilityBus::Limit limit) const
{
    return m_bus->call(m_element, accessibleInterfaces::editableText, method, arguments, limit);
}

QCoro::Task<std::optional<QString>> TextField::text() const
{
    auto asked = askText(QStringLiteral("GetText"), {0, -1});
    const auto answer = co_await asked;
    co_return busAnswer::toString(answer);
}

QCoro::Task<std::optional<TextUnit>> TextField::unit(QString text) const
{
    auto asked = m_bus->property(m_element, accessibleInterfaces::text, QStringLiteral("CharacterCount"));
    const auto answer = co_await asked;
    const auto count = busAnswer::toIntProperty(answer);
    co_return count ? unitOf(text, *count) : std::nullopt;
}

QCoro::Task<std::optional<TextContent>> TextField::content() const
{
    auto askedCaret = m_bus->property(m_element, accessibleInterfaces::text, QStringLiteral("CaretOffset"));
    const auto all = co_await text();
    const auto caretAnswer = co_await askedCaret;
    const auto caret = busAnswer::toIntProperty(caretAnswer);
    if (!all || !caret)
        co_return std::nullopt;
    const auto counting = co_await unit(*all);
    const auto selected = co_await selection(*caret);
    if (!counting || !selected || !indexOf(*counting, *all, *caret) ||
        !indexOf(*counting, *all, selected->first) || !indexOf(*counting, *all, selected->second))
        co_return std::nullopt;
    co_return TextContent{*all, *counting, *caret, *selected};
}

QCoro::Task<std::optional<std::pair<int, int>>> TextField::selection(int caret) const
{
    auto askedCount = askText(QStringLiteral("GetNSelections"));
    const auto countAnswer = co_await askedCount;
    const auto count = busAnswer::toInt(countAnswer);
    if (!count || *count > 1)
        co_return std::nullopt;
    const std::pair nothing(caret, caret);
    if (*count < 1)
        co_return nothing;
    auto asked = askText(QStringLiteral("GetSelection"), {0});
    const auto answer = co_await asked;
    const auto range = busAnswer::toRange(answer);
    if (!range)
        co_return std::nullopt;
    const auto [start, end] = std::minmax(range->first, range->second);
    co_return start == end ? nothing : std::pair(start, end);
}

QCoro::Task<std::optional<int>> TextField::insertedLength(QString text) const
{
    const Accessible program{m_element.service, accessibleRootPath};
    auto askedName =
        m_bus->property(program, accessibleInterfaces::application, QStringLiteral("ToolkitName"));
    const auto nameAnswer = co_await askedName;
    const auto name = busAnswer::toStringProperty(nameAnswer);
    if (!name)
        co_return std::nullopt;
    // The length is meant in bytes. Qt takes it for UTF-16 units, and would fill up what is too short.
    co_return static_cast<int>(*name == u"Qt" ? text.size() : text.toUtf8().size());
}

QCoro::Task<std::optional<bool>> TextField::insert(int offset, QString text, int length) const
{
    auto asked = askEditableText(QStringLiteral("InsertText"), {offset, text, length}, insertLimit);
    const auto answer = co_await asked;
    if (!answer)
        co_return std::nullopt;
    co_return busAnswer::toBool(answer).value_or(false);
}

QCoro::Task<bool> TextField::remove(int start, int end) const
{
    auto asked = askEditableText(QStringLiteral("DeleteText"), {start, end});
    const auto answer = co_await asked;
    co_return busAnswer::toBool(answer).value_or(false);
}

QCoro::Task<bool> TextField::setText(QString text) const
{
    auto asked = askEditableText(QStringLiteral("SetTextContents"), {text});
    const auto answer = co_await asked;
    co_return busAnswer::toBool(answer).value_or(false);
}

QCoro::Task<bool> TextField::setCaret(int offset) const
{
    auto asked = askText(QStringLiteral("SetCaretOffset"), {offset});
    const auto answer = co_await asked;
    co_return busAnswer::toBool(answer).value_or(false);
}

QCoro::Task<bool> TextField::select(int start, int end) const
{
    // Which of the two a program takes depends on whether it has a selection at the moment.
    auto askedChanged = askText(QStringLiteral("SetSelection"), {0, start, end});
    const auto changed = co_await askedChanged;
    if (busAnswer::toBool(changed).value_or(false))
        co_return true;
    auto askedAdded = askText(QStringLiteral("AddSelection"), {start, end});
    const auto added = co_await askedAdded;
    co_return busAnswer::toBool(added).value_or(false);
}

} // namespace tulvane
