#include <platform/linux/wayland/fields/InputMethodTurn.h>

#include <utility>

namespace tulvane {

std::shared_ptr<InputMethodTurn> InputMethodTurn::take(std::shared_ptr<WaylandConnection> connection)
{
    auto* const manager =
        connection->bind<zwp_input_method_manager_v2>(zwp_input_method_manager_v2_interface, 1);
    if (!manager)
        return nullptr;
    std::shared_ptr<InputMethodTurn> turn;
    if (connection->seat())
        turn.reset(new InputMethodTurn(connection, manager));
    zwp_input_method_manager_v2_destroy(manager);
    connection->flush();
    return turn;
}

InputMethodTurn::InputMethodTurn(std::shared_ptr<WaylandConnection> connection,
                                 zwp_input_method_manager_v2* manager)
    : m_connection(std::move(connection)),
      m_method(zwp_input_method_manager_v2_get_input_method(manager, m_connection->seat()))
{
    zwp_input_method_v2_add_listener(m_method, &listener(), this);
}

InputMethodTurn::~InputMethodTurn()
{
    giveBack();
}

const zwp_input_method_v2_listener& InputMethodTurn::listener()
{
    static const zwp_input_method_v2_listener events{
        .activate =
            [](void* data, zwp_input_method_v2*) {
                auto& turn = *static_cast<InputMethodTurn*>(data);
                turn.m_willBeActive = true;
                turn.m_coming = {};
            },
        .deactivate =
            [](void* data, zwp_input_method_v2*) {
                static_cast<InputMethodTurn*>(data)->m_willBeActive = false;
            },
        .surrounding_text =
            [](void* data, zwp_input_method_v2*, const char* text, std::uint32_t cursor,
               std::uint32_t anchor) {
                FieldState& coming = static_cast<InputMethodTurn*>(data)->m_coming;
                coming.tellsText = true;
                coming.around = {text, cursor, anchor};
            },
        .text_change_cause = [](void*, zwp_input_method_v2*, std::uint32_t) {},
        .content_type =
            [](void* data, zwp_input_method_v2*, std::uint32_t hints, std::uint32_t purpose) {
                FieldState& coming = static_cast<InputMethodTurn*>(data)->m_coming;
                coming.hints = hints;
                coming.purpose = purpose;
            },
        .done = [](void* data, zwp_input_method_v2*) { static_cast<InputMethodTurn*>(data)->apply(); },
        .unavailable = [](void* data,
                          zwp_input_method_v2*) { static_cast<InputMethodTurn*>(data)->giveBack(); },
    };
    return events;
}

void InputMethodTurn::apply()
{
    ++m_states;
    m_field = m_willBeActive ? std::optional(m_coming) : std::nullopt;
    m_waits.notifyAll();
}

void InputMethodTurn::commit(const QByteArray& text)
{
    if (isOver())
        return;
    zwp_input_method_v2_commit_string(m_method, text.constData());
    zwp_input_method_v2_commit(m_method, m_states);
    m_connection->flush();
}

void InputMethodTurn::giveBack()
{
    if (isOver())
        return;
    zwp_input_method_v2_destroy(std::exchange(m_method, nullptr));
    m_connection->flush();
    m_field.reset();
    m_waits.cutShort();
}

} // namespace tulvane
