#include <base/async/TaskFuture.h>
#include <platform/linux/gnome/IBusElements.h>

#include <QCoroFuture>

namespace tulvane {

namespace {

using Found = std::shared_ptr<FocusedElement>;
using Commit = std::shared_ptr<IBusCommit>;

/// Whether the field has another text now, with ours in it.
QCoro::Task<bool> hasArrived(Found element, std::optional<QString> before, QString text)
{
    const std::optional<QString> value = co_await element->value();
    co_return value&& value != before && value->contains(text.trimmed());
}

QCoro::Task<bool> write(Found element, Commit commit, QString text, std::shared_ptr<bool> mayStillArrive)
{
    *mayStillArrive = false;
    const std::optional<QString> before = co_await element->value();
    const auto isThere = std::make_shared<bool>(false);
    const auto arrived = [element, before, text, isThere]() -> QCoro::Task<bool> {
        *isThere = co_await hasArrived(element, before, text);
        co_return *isThere;
    };
    const auto outcome = co_await commit->commit(text, arrived);
    if (outcome == IBusCommit::Outcome::unavailable) {
        // The program itself takes it as well, though not every one of them takes all of it.
        const bool written = co_await element->setSelectedText(text);
        *mayStillArrive = element->mayStillArrive();
        co_return written;
    }
    // Once it is on its way it must not be put there in another way.
    *mayStillArrive = outcome != IBusCommit::Outcome::noField && !*isThere;
    co_return *isThere;
}

class IBusElement final : public FocusedElement {
public:
    IBusElement(Found element, Commit commit) : m_element(std::move(element)), m_commit(std::move(commit)) {}

    [[nodiscard]] QFuture<bool> settable() override { return m_element->settable(); }
    [[nodiscard]] QFuture<std::optional<QString>> role() override { return m_element->role(); }
    [[nodiscard]] QFuture<bool> setSelectedText(const QString& text) override
    {
        return futureOf(write(m_element, m_commit, text, m_mayStillArrive));
    }
    [[nodiscard]] bool mayStillArrive() const override { return *m_mayStillArrive; }
    [[nodiscard]] QFuture<std::optional<QString>> value() override { return m_element->value(); }

private:
    Found m_element;
    Commit m_commit;
    std::shared_ptr<bool> m_mayStillArrive = std::make_shared<bool>(false);
};

QCoro::Task<Found> find(std::shared_ptr<FocusedElements> elements, Commit commit)
{
    const Found element = co_await elements->focused();
    co_return element ? std::make_shared<IBusElement>(element, std::move(commit)) : nullptr;
}

} // namespace

QFuture<std::shared_ptr<FocusedElement>> IBusElements::focused()
{
    return futureOf(find(m_found, m_commit));
}

} // namespace tulvane
