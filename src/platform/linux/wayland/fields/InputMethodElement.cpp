#include <base/Log.h>
#include <base/async/TaskFuture.h>
#include <platform/linux/wayland/fields/InputMethodElement.h>

namespace tulvane {

namespace {

using Turn = std::shared_ptr<InputMethodTurn>;

bool mayBeWritten(const std::optional<FieldState>& field)
{
    return field && field->tellsText && !field->isForPasswords();
}

bool canBeSent(const QByteArray& text)
{
    // A zero byte would end it for the protocol.
    return !text.isEmpty() && text.size() <= InputMethodElement::longest && !text.contains('\0') &&
           TextAround::canTell(text);
}

/// Whether the field has shown the text before the limit was over.
QCoro::Task<bool> hasArrived(Turn turn, QByteArray text, TextAround before)
{
    const auto limit = turn->waits().limit(InputMethodElement::arrivalLimit);
    while (turn->field() && !limit->isOver()) {
        if (turn->field()->around.hasTaken(text, before))
            co_return true;
        co_await turn->waits().next();
    }
    co_return false;
}

QCoro::Task<bool> write(Turn turn, QByteArray text, std::shared_ptr<bool> mayStillArrive)
{
    *mayStillArrive = false;
    const std::optional<FieldState> field = turn->field();
    if (!mayBeWritten(field) || !canBeSent(text))
        co_return false;
    turn->commit(text);
    const bool isThere = co_await hasArrived(turn, text, field->around);
    // Once it is on its way it must not be put there in another way.
    *mayStillArrive = !isThere;
    if (!isThere)
        qCWarning(lcInsertion, "Input method: the field does not show what it was sent");
    turn->giveBack();
    co_return isThere;
}

} // namespace

QFuture<bool> InputMethodElement::settable()
{
    return QtFuture::makeReadyFuture(m_turn->field() && m_turn->field()->tellsText);
}

QFuture<std::optional<QString>> InputMethodElement::role()
{
    std::optional<QString> role;
    if (const auto& field = m_turn->field(); field && field->isForPasswords())
        role = secureTextFieldRole;
    else if (field && field->has(FieldState::Hint::multiLine))
        role = QStringLiteral("AXTextArea");
    return QtFuture::makeReadyFuture(role);
}

QFuture<bool> InputMethodElement::setSelectedText(const QString& text)
{
    return futureOf(write(m_turn, text.toUtf8(), m_mayStillArrive));
}

QFuture<std::optional<QString>> InputMethodElement::value()
{
    return QtFuture::makeReadyFuture(std::optional<QString>());
}

} // namespace tulvane
