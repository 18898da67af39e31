#include <base/async/TaskFuture.h>
#include <platform/linux/wayland/fields/InputMethodElement.h>
#include <platform/linux/wayland/fields/InputMethodElements.h>

#include <QCoroFuture>

namespace tulvane {

using Found = std::shared_ptr<FocusedElement>;

/// Held also by questions that are on their way when the adapter goes.
struct InputMethodElements::Shared {
    std::shared_ptr<FocusedElements> found;
    std::shared_ptr<WaylandConnection> connection;
    std::function<bool()> mayHaveField;
    std::weak_ptr<InputMethodTurn> turn; ///< the last
    bool isOver = false;

    static QCoro::Task<Found> focused(std::shared_ptr<Shared> shared)
    {
        const Found element = co_await shared->found->focused();
        bool isWritable = false;
        if (element)
            isWritable = co_await element->settable();
        if (isWritable || shared->isOver || !shared->mayHaveField())
            co_return element;
        const Found behind = co_await byInputMethod(shared);
        co_return behind ? behind : element;
    }

private:
    static QCoro::Task<Found> byInputMethod(std::shared_ptr<Shared> shared)
    {
        const auto turn = InputMethodTurn::take(shared->connection);
        shared->turn = turn;
        if (!turn)
            co_return Found();
        const auto limit = turn->waits().limit(focusLimit);
        while (!turn->isOver() && !turn->field() && !limit->isOver())
            co_await turn->waits().next();
        if (turn->field() && turn->field()->tellsText)
            co_return Found(std::make_shared<InputMethodElement>(turn));
        co_return Found();
    }
};

InputMethodElements::InputMethodElements(std::shared_ptr<FocusedElements> found,
                                         std::shared_ptr<WaylandConnection> connection,
                                         std::function<bool()> mayHaveField)
    : m_shared(std::make_shared<Shared>())
{
    m_shared->found = std::move(found);
    m_shared->connection = std::move(connection);
    m_shared->mayHaveField = std::move(mayHaveField);
}

InputMethodElements::~InputMethodElements()
{
    m_shared->isOver = true;
    if (const auto turn = m_shared->turn.lock())
        turn->giveBack();
}

QFuture<std::shared_ptr<FocusedElement>> InputMethodElements::focused()
{
    return futureOf(Shared::focused(m_shared));
}

} // namespace tulvane
