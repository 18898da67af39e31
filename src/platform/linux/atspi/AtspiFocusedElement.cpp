#include <base/async/TaskFuture.h>
#include <platform/linux/atspi/AtspiFocusedElement.h>
#include <platform/linux/atspi/TextReplacement.h>

namespace tulvane {

using State = AccessibleStates::State;

namespace {

// The element may go while an answer is on its way, so these hold what they need themselves.
using Bus = std::shared_ptr<AccessibilityBus>;

Awaited<QDBusMessage> ask(const Bus& bus, const Accessible& object, const QString& method)
{
    return bus->call(object, accessibleInterfaces::accessible, method);
}

QCoro::Task<bool> canBeWritten(Bus bus, Accessible element)
{
    auto askedStates = ask(bus, element, QStringLiteral("GetState"));
    const auto interfaceAnswer = co_await ask(bus, element, QStringLiteral("GetInterfaces"));
    const auto stateAnswer = co_await askedStates;
    const auto interfaces = busAnswer::toStrings(interfaceAnswer).value_or(QStringList());
    const auto states = busAnswer::toStates(stateAnswer).value_or(AccessibleStates());
    // One that cannot be edited may have the interface all the same, and accept every request.
    co_return interfaces.contains(accessibleInterfaces::text) &&
        interfaces.contains(accessibleInterfaces::editableText) && states.has(State::editable) &&
        !states.has(State::readOnly);
}

QCoro::Task<std::optional<QString>> roleOf(Bus bus, Accessible element)
{
    const auto answer = co_await ask(bus, element, QStringLiteral("GetRole"));
    const auto role = busAnswer::toUnsigned(answer);
    if (role == static_cast<quint32>(AccessibleRole::passwordText))
        co_return FocusedElement::secureTextFieldRole;
    if (role == static_cast<quint32>(AccessibleRole::entry))
        co_return QStringLiteral("AXTextField");
    if (role == static_cast<quint32>(AccessibleRole::text)) {
        const auto states = co_await ask(bus, element, QStringLiteral("GetState"));
        const bool isArea = busAnswer::toStates(states).value_or(AccessibleStates()).has(State::multiLine);
        co_return isArea ? QStringLiteral("AXTextArea") : QStringLiteral("AXTextField");
    }
    const auto name = co_await ask(bus, element, QStringLiteral("GetRoleName"));
    co_return busAnswer::toString(name);
}

QCoro::Task<bool> isInFront(Bus bus, FocusedAccessible place)
{
    auto askedWindow = ask(bus, place.window, QStringLiteral("GetState"));
    auto askedProcess = bus->processOf(place.window);
    const auto elementAnswer = co_await ask(bus, place.element, QStringLiteral("GetState"));
    const auto windowAnswer = co_await askedWindow;
    const auto element = busAnswer::toStates(elementAnswer).value_or(AccessibleStates());
    const auto window = busAnswer::toStates(windowAnswer).value_or(AccessibleStates());
    const auto processAnswer = co_await askedProcess;
    if (!element.has(State::focused) || !window.has(State::active) || !processAnswer)
        co_return false;
    if (!bus->front())
        co_return true;
    // The programs' own word was asked for first: it takes its time, and this does not.
    const auto front = bus->front()();
    co_return front&& busAnswer::toUnsigned(processAnswer) == front;
}

QCoro::Task<bool> write(Bus bus, FocusedAccessible place, QString text, std::shared_ptr<bool> mayStillArrive)
{
    TextReplacement replacement(TextField(bus, place.element), text,
                                [bus, place] { return isInFront(bus, place); });
    const bool written = co_await replacement.run();
    *mayStillArrive = replacement.mayStillArrive();
    co_return written;
}

QCoro::Task<std::optional<QString>> textOf(Bus bus, Accessible element)
{
    const TextField field(bus, element);
    co_return co_await field.text();
}

} // namespace

QFuture<bool> AtspiFocusedElement::settable()
{
    return futureOf(canBeWritten(m_bus, m_place.element));
}

QFuture<std::optional<QString>> AtspiFocusedElement::role()
{
    return futureOf(roleOf(m_bus, m_place.element));
}

QFuture<bool> AtspiFocusedElement::setSelectedText(const QString& text)
{
    return futureOf(write(m_bus, m_place, text, m_mayStillArrive));
}

QFuture<std::optional<QString>> AtspiFocusedElement::value()
{
    return futureOf(textOf(m_bus, m_place.element));
}

} // namespace tulvane
