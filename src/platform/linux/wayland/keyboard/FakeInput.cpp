#include <platform/linux/layout/ModifierKeys.h>
#include <platform/linux/wayland/keyboard/FakeInput.h>

namespace tulvane {

std::unique_ptr<FakeInput> FakeInput::make(std::shared_ptr<WaylandConnection> connection)
{
    auto* const object = connection->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 4);
    if (!object)
        return nullptr;
    std::unique_ptr<FakeInput> input(new FakeInput(std::move(connection), object));
    const bool knowsKeys =
        org_kde_kwin_fake_input_get_version(object) >= ORG_KDE_KWIN_FAKE_INPUT_KEYBOARD_KEY_SINCE_VERSION;
    return knowsKeys && input->finish() ? std::move(input) : nullptr;
}

FakeInput::FakeInput(std::shared_ptr<WaylandConnection> connection, org_kde_kwin_fake_input* object)
    : m_connection(std::move(connection)),
      m_object(object)
{
    org_kde_kwin_fake_input_authenticate(m_object, "Tulvane", "pastes dictated text");
}

FakeInput::~FakeInput()
{
    org_kde_kwin_fake_input_destroy(m_object);
    m_connection->flush();
}

void FakeInput::letGo()
{
    for (const quint32 key : modifierKeys)
        release(key);
}

void FakeInput::press(quint32 evdev)
{
    org_kde_kwin_fake_input_keyboard_key(m_object, evdev, WL_KEYBOARD_KEY_STATE_PRESSED);
}

void FakeInput::release(quint32 evdev)
{
    org_kde_kwin_fake_input_keyboard_key(m_object, evdev, WL_KEYBOARD_KEY_STATE_RELEASED);
}

bool FakeInput::finish()
{
    m_connection->catchUp();
    return !m_connection->isBroken();
}

} // namespace tulvane
