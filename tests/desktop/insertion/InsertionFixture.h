#pragma once

#include "JsonProcess.h"
#include "TargetPrograms.h"
#include "X11Peers.h"

#include <insertion/PasteTable.h>
#include <insertion/TextInserter.h>
#include <platform/fake/FakeFocusedElement.h>
#include <platform/linux/session/X11PrivacyPermissions.h>
#include <platform/linux/session/X11Text.h>
#include <support/Await.h>
#include <support/LogCapture.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <gtest/gtest.h>

namespace tulvane::test {

/// A selection's content by target.
using Content = QMap<QString, QByteArray>;

/// The inserter as the program has it, on a desktop with a target program in front. The user has something in
/// several types on the clipboard, and something selected.
class InsertionFixture : public testing::Test {
protected:
    InsertionFixture();

    /// Starts the program that is in front from now on.
    void open(Target target);

    /// The user copies and selects something that no insertion has seen before.
    void copySomething();
    [[nodiscard]] QCoro::Task<InsertionResult> start(const QString& text);
    [[nodiscard]] InsertionResult insert(const QString& text);

    /// Inserts into the empty field and expects that exactly this arrives, and that all else is as it was.
    void expectArrives(const QString& text);
    /// Expects that the field holds exactly this, at once or soon.
    void expectHeld(const QString& text);
    /// Expects that the clipboard and the selection are what the user copied and selected last.
    void expectUsersContent();

    [[nodiscard]] Content read(const QString& selection);
    [[nodiscard]] QByteArray clipboardText();
    /// One target of the clipboard, as a program of its own gets it.
    [[nodiscard]] QByteArray readElsewhere(const QString& target);
    /// The window that has the keyboard focus.
    [[nodiscard]] xcb_window_t front();
    /// The keys that the server believes to be down.
    [[nodiscard]] QList<xcb_keycode_t> down();
    /// For text-view targets: from now on they read the clipboard so long after the key. Negative: never.
    void readLate(std::chrono::milliseconds after);
    /// Whether the target has been asked to paste since it was told how late to read.
    [[nodiscard]] bool isAsked() const;

    static constexpr std::chrono::milliseconds never{-1};

    VirtualDesktop m_desktop{{.windowManager = VirtualDesktop::WindowManager::openbox,
                              .sessionBus = VirtualDesktop::SessionBus::own,
                              .openboxKeys = {}}};
    EventLoopScheduler m_scheduler;
    LogCapture m_log;
    XTestKeys m_fingers{m_desktop.display()};
    std::unique_ptr<X11Connection> m_link = X11Connection::open(m_desktop.display().toLocal8Bit());
    ScriptedOwner m_clipboardOwner{m_desktop.display()};
    ScriptedOwner m_selectionOwner{m_desktop.display(), QStringLiteral("PRIMARY")};
    Content m_copied;
    Content m_selected;
    std::unique_ptr<X11Text> m_text =
        X11Text::open(m_desktop.display().toLocal8Bit(), pasteTable({}), m_scheduler);
    X11PrivacyPermissions m_permissions{x11Abilities(m_desktop.display().toLocal8Bit()), {}};
    FakeFocusedElements m_elements;
    TextInserter m_inserter{{m_text->pasteboards(), m_text->keys(), m_elements, m_permissions, m_scheduler}};
    std::unique_ptr<TargetProgram> m_target;
    int m_copies = 0;
};

/// For suites that run once a target.
[[nodiscard]] inline std::string nameOfParameter(const testing::TestParamInfo<Target>& parameter)
{
    return targetName(parameter.param).toStdString();
}

/// A finished task's result.
[[nodiscard]] InsertionResult resultOf(const QCoro::Task<InsertionResult>& task);

/// Runs the event loop until the task is finished. Throws when it takes too long.
[[nodiscard]] InsertionResult finished(const QCoro::Task<InsertionResult>& task);

} // namespace tulvane::test
