#pragma once

#include <platform/linux/wayland/clipboard/DataControlPasteboards.h>
#include <platform/linux/wayland/keyboard/DeviceKeyPosting.h>
#include <platform/linux/wayland/keyboard/FakeInput.h>
#include <platform/linux/wayland/keyboard/VirtualKeyboard.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/targets/JsonProcess.h>
#include <support/wayland/WaylandDesktop.h>

#include <QStringList>

#include <gtest/gtest.h>

namespace tulvane::test {

/// Keys posted on a compositor, and a text field in front that is pasted into and written in.
template <class Device, WaylandDesktop::Kind kind>
class DeviceWorld {
public:
    static constexpr auto desktopKind = kind;
    DeviceWorld()
    {
        EXPECT_TRUE(waitUntil([this] { return m_field.count(QStringLiteral("ready")) > 0; }));
    }
    KeyPosting& keys() { return m_keys; }
    WaylandDesktop& desktop() { return m_desktop; }
    PasteTarget front() { return m_boards->pasteTarget(); }
    void switchWindow() { ++m_front->program.window; }
    void breakDown() { m_desktop.stop(); }
    /// Until now: the user's own key comes last, so that nothing is still on its way.
    QStringList typed()
    {
        constexpr int usersKey = 45;
        m_desktop.press({usersKey});
        EXPECT_TRUE(waitUntil([this] { return text().endsWith(QStringLiteral("x")); })) << qPrintable(text());
        QStringList typed;
        for (const QJsonObject& told : m_field.told()) {
            const QString event = told[QStringLiteral("event")].toString();
            if (event == u"pasteAsked")
                typed.append(QStringLiteral("paste"));
            else if (event == u"changed")
                typed.append(QStringLiteral("space"));
        }
        typed.removeLast(); // the user's
        return typed;
    }
    /// There is nothing on the clipboard: a paste is asked for and changes nothing.
    qsizetype pastes() const { return m_field.count(QStringLiteral("pasteAsked")); }
    QString text()
    {
        return m_field.ask({{QStringLiteral("do"), QStringLiteral("report")}})[QStringLiteral("text")]
            .toString();
    }
    int chordsOut() const { return m_chordsOut; }

private:
    class Front final : public FrontPrograms {
    public:
        [[nodiscard]] FrontProgram current() override { return program; }
        FrontProgram program{7, {QStringLiteral("target")}, 0, false};
    };

    WaylandDesktop m_desktop{kind};
    QByteArray m_socket = WaylandConnection::socketOf(m_desktop.environment());
    JsonProcess m_field{
        m_desktop.start(QStringLiteral("/usr/bin/python3"),
                        {sourceFolder() + QStringLiteral("/tests/support/targets/gtk_target.py"),
                         QStringLiteral("view")}),
        '\n'};
    std::shared_ptr<Front> m_front = std::make_shared<Front>();
    std::unique_ptr<DataControlPasteboards> m_boards = DataControlPasteboards::open(m_socket, m_front, {});
    int m_chordsOut = 0;
    DeviceKeyPosting m_keys{
        Device::make(WaylandConnection::open(m_socket)),
        {.isInFront = [this](const PasteTarget& target) { return m_boards->isInFront(target); },
         .pasting =
             [this](const PasteTarget& target) {
                 ++m_chordsOut;
                 m_boards->expectReader(target);
             }}};
};

using SwayKeysWorld = DeviceWorld<VirtualKeyboard, WaylandDesktop::Kind::sway>;
using KWinKeysWorld = DeviceWorld<FakeInput, WaylandDesktop::Kind::kwin>;

} // namespace tulvane::test
