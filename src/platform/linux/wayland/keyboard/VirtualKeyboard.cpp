#include <platform/linux/wayland/keyboard/VirtualKeyboard.h>

#include <sys/mman.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon.h>

#include <chrono>
#include <cstring>

namespace tulvane {

namespace {

constexpr quint32 codeOffset = 8;
constexpr quint32 shiftKey = 42;

template <class Object, void (*release)(Object*)>
using Owned = std::unique_ptr<Object, decltype([](Object* object) { release(object); })>;

std::uint32_t milliseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

} // namespace

struct VirtualKeyboard::Keymap {
    Owned<xkb_context, xkb_context_unref> context{xkb_context_new(XKB_CONTEXT_NO_FLAGS)};
    Owned<xkb_keymap, xkb_keymap_unref> keymap;
    Owned<xkb_state, xkb_state_unref> state;

    [[nodiscard]] bool make()
    {
        xkb_rule_names names{};
        names.layout = "us";
        keymap.reset(context ? xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS)
                             : nullptr);
        state.reset(keymap ? xkb_state_new(keymap.get()) : nullptr);
        return state != nullptr;
    }
};

std::unique_ptr<VirtualKeyboard> VirtualKeyboard::make(std::shared_ptr<WaylandConnection> connection)
{
    auto* const manager =
        connection->bind<zwp_virtual_keyboard_manager_v1>(zwp_virtual_keyboard_manager_v1_interface, 1);
    if (!manager || !connection->seat())
        return nullptr;
    std::unique_ptr<VirtualKeyboard> keyboard(new VirtualKeyboard(std::move(connection), manager));
    if (!keyboard->sendKeymap())
        return nullptr;
    // Some toolkits lose the first key of a keyboard that is new to them: this one means nothing.
    keyboard->press(shiftKey);
    keyboard->release(shiftKey);
    return keyboard->finish() ? std::move(keyboard) : nullptr;
}

VirtualKeyboard::VirtualKeyboard(std::shared_ptr<WaylandConnection> connection,
                                 zwp_virtual_keyboard_manager_v1* manager)
    : m_connection(std::move(connection)),
      m_manager(manager),
      m_keyboard(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager, m_connection->seat())),
      m_keymap(std::make_unique<Keymap>())
{
}

VirtualKeyboard::~VirtualKeyboard()
{
    zwp_virtual_keyboard_v1_destroy(m_keyboard);
    zwp_virtual_keyboard_manager_v1_destroy(m_manager);
    m_connection->flush();
}

bool VirtualKeyboard::sendKeymap()
{
    if (!m_keymap->make())
        return false;
    const std::unique_ptr<char, decltype(&free)> text(
        xkb_keymap_get_as_string(m_keymap->keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1), &free);
    if (!text)
        return false;
    const std::size_t size = std::strlen(text.get()) + 1;
    const int file = memfd_create("keymap", MFD_CLOEXEC);
    const bool isWritten = file >= 0 && write(file, text.get(), size) == static_cast<ssize_t>(size);
    if (isWritten)
        zwp_virtual_keyboard_v1_keymap(m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                       static_cast<std::uint32_t>(size));
    if (file >= 0)
        close(file);
    return isWritten;
}

void VirtualKeyboard::key(quint32 evdev, bool isDown)
{
    zwp_virtual_keyboard_v1_key(m_keyboard, milliseconds(), evdev,
                                isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    xkb_state* const state = m_keymap->state.get();
    xkb_state_update_key(state, evdev + codeOffset, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
    zwp_virtual_keyboard_v1_modifiers(m_keyboard, xkb_state_serialize_mods(state, XKB_STATE_MODS_DEPRESSED),
                                      0, 0, 0);
}

bool VirtualKeyboard::finish()
{
    m_connection->catchUp();
    return !m_connection->isBroken();
}

} // namespace tulvane
