#pragma once

#include <platform/linux/atspi/AccessibilityBus.h>
#include <platform/linux/atspi/TextChange.h>

#include <QCoroTask>

#include <memory>
#include <optional>
#include <utility>

namespace tulvane {

/// An element's text and where one writes in it, as read at one moment.
struct TextContent {
    QString text;
    TextUnit unit = TextUnit::codePoint;
    int caret = 0;
    /// The selection, by the program's own offsets; both are the caret where nothing is selected.
    std::pair<int, int> selection;

    [[nodiscard]] bool hasSelection() const { return selection.first < selection.second; }
};

/// The text of one element, read and written. Main thread. False or nothing wherever the program refuses, is
/// silent, or says what cannot be.
class TextField final {
public:
    TextField(std::shared_ptr<AccessibilityBus> bus, Accessible element)
        : m_bus(std::move(bus)),
          m_element(std::move(element))
    {
    }

    [[nodiscard]] AccessibilityBus& bus() const { return *m_bus; }

    [[nodiscard]] QCoro::Task<std::optional<QString>> text() const;
    /// How the program counts, told from its text now.
    [[nodiscard]] QCoro::Task<std::optional<TextUnit>> unit(QString text) const;
    /// Nothing too where several ranges are selected.
    [[nodiscard]] QCoro::Task<std::optional<TextContent>> content() const;

    /// What `insert` is to name as the length of this text.
    [[nodiscard]] QCoro::Task<std::optional<int>> insertedLength(QString text) const;
    /// How long a busy program may take to answer a request to insert.
    static constexpr std::chrono::milliseconds insertLimit{5000};
    /// Whether the program answered that it has; nothing where it did not answer, which is no refusal: the
    /// request waits for it. `offset` and the lengths below are the program's own. The request is on its way
    /// when this returns, before it is awaited.
    [[nodiscard]] QCoro::Task<std::optional<bool>> insert(int offset, QString text, int length) const;
    [[nodiscard]] QCoro::Task<bool> remove(int start, int end) const;
    [[nodiscard]] QCoro::Task<bool> setText(QString text) const;
    [[nodiscard]] QCoro::Task<bool> setCaret(int offset) const;
    [[nodiscard]] QCoro::Task<bool> select(int start, int end) const;

private:
    [[nodiscard]] Awaited<QDBusMessage> askText(const QString& method,
                                                const QVariantList& arguments = {}) const;
    [[nodiscard]] Awaited<QDBusMessage>
    askEditableText(const QString& method, const QVariantList& arguments,
                    AccessibilityBus::Limit limit = BusLink::callLimit) const;
    [[nodiscard]] QCoro::Task<std::optional<std::pair<int, int>>> selection(int caret) const;

    std::shared_ptr<AccessibilityBus> m_bus;
    Accessible m_element;
};

} // namespace tulvane
