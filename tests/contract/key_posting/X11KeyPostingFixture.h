#pragma once

#include "X11Peers.h"

#include <platform/linux/session/X11Abilities.h>
#include <platform/linux/session/X11Text.h>
#include <platform/linux/x11/keyboard/KeyboardDevices.h>
#include <platform/linux/x11/keyboard/KeyboardLayout.h>
#include <platform/linux/x11/keyboard/KeyboardState.h>
#include <support/Await.h>
#include <support/Soak.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace tulvane {

using test::DeviceKey;
using test::HeardKey;

inline const PasteRules terminals{{u"vteish"_qs, PasteChord::controlShiftV, PasteSelection::clipboard},
                                  {u"XTermish"_qs, PasteChord::shiftInsert, PasteSelection::primary}};

inline constexpr int groupShift = 13; // where an event's state holds the group

class X11KeyPostingTest : public testing::Test {
protected:
    X11KeyPostingTest() { m_front.takeFocus(); }

    PasteTarget front() { return m_text->pasteboards().pasteTarget(); }
    bool paste()
    {
        const bool posted = test::await(m_text->keys().paste(front()));
        m_front.catchUp();
        return posted;
    }
    bool typeSpace()
    {
        const bool posted = test::await(m_text->keys().typeSpaces(1));
        m_front.catchUp();
        return posted;
    }

    /// The presses of keys that are no modifiers: "Ctrl+v", by what the layout of the event's group says.
    QStringList strokes()
    {
        const auto layout = KeyboardLayout::current(m_front.link());
        QStringList strokes;
        for (const HeardKey& key : m_front.keys()) {
            if (!key.down || layout->isHeldModifier(static_cast<xcb_keycode_t>(key.key)))
                continue;
            QString text;
            for (const auto& [mask, name] :
                 {std::pair(XCB_MOD_MASK_CONTROL, "Ctrl+"), std::pair(XCB_MOD_MASK_SHIFT, "Shift+"),
                  std::pair(XCB_MOD_MASK_1, "Alt+"), std::pair(XCB_MOD_MASK_4, "Super+"),
                  std::pair(XCB_MOD_MASK_5, "Level3+")}) {
                if ((key.state & mask) != 0)
                    text += QString::fromLatin1(name);
            }
            strokes.append(text + letter(key, *layout));
        }
        return strokes;
    }
    static QString letter(const HeardKey& key, const KeyboardLayout& layout)
    {
        const auto group = static_cast<std::uint8_t>(key.state >> groupShift & 3);
        for (const auto& [name, letter] : {std::pair("v", XKB_KEY_v), std::pair("space", XKB_KEY_space),
                                           std::pair("Insert", XKB_KEY_Insert)}) {
            const auto place = layout.find(static_cast<xkb_keysym_t>(letter), group);
            if (place && place->key == key.key && place->group == group)
                return QString::fromLatin1(name);
        }
        return QString::number(key.key);
    }
    /// Another layout on one of the devices alone, for which programs see what its next key brings.
    void setLayout(const test::XTestKeys& keyboard, const QString& layout, const QString& variant = {})
    {
        m_desktop.run(u"setxkbmap"_qs, {u"-device"_qs, QString::number(keyboard.device()), u"-layout"_qs,
                                        layout, u"-variant"_qs, variant});
        m_fingers.tap(DeviceKey::f9);
        m_front.catchUp();
        m_front.forgetKeys();
    }
    /// The keys that the server believes to be down now.
    QList<xcb_keycode_t> down() { return KeyboardState::current(m_front.link()).down; }
    QList<HeldKey> postingKeysDown()
    {
        return heldKeys(m_front.link(), {static_cast<quint8>(m_program.device())});
    }
    static xcb_keycode_t code(DeviceKey key) { return static_cast<xcb_keycode_t>(static_cast<int>(key) + 8); }

    test::VirtualDesktop m_desktop;
    EventLoopScheduler m_scheduler;
    test::X11Peer m_front{m_desktop.display()};
    test::XTestKeys m_fingers{m_desktop.display()};
    /// Another program that posts keys.
    test::XTestKeys m_program{m_desktop.display(), test::XTestKeys::Device::posting};
    std::unique_ptr<X11Text> m_text =
        X11Text::open(m_desktop.display().toLocal8Bit(), terminals, m_scheduler);
};

} // namespace tulvane
