#pragma once

#include <ports/StatusItem.h>

#include <QObject>

#include <functional>

namespace tulvane {

class AppSettings;
class DictationController;
class DictationSession;
class Pasteboards;
class Windows;

/// The lines of the menu that do something: the last transcript, the dictation's commands, quick switches,
/// and the ways into the windows. Main thread.
class MenuBarCommands final : public QObject {
    Q_OBJECT

public:
    /// More characters of a transcript than this do not fit into a menu.
    static constexpr qsizetype mostCharacters = 60;

    /// `quit` ends the program; the event loop calls it. All collaborators outlive this object and the
    /// entries.
    MenuBarCommands(DictationController& controller, const DictationSession& session, AppSettings& settings,
                    Pasteboards& pasteboards, Windows& windows, std::function<void()> quit,
                    QObject* parent = nullptr);

    [[nodiscard]] QList<MenuEntry> entries() const;

    /// The text's first characters as a user counts them, with an ellipsis where there are more; on one line.
    [[nodiscard]] static QString shortened(const QString& text);

Q_SIGNALS:
    void changed();

private:
    void appendTranscript(QList<MenuEntry>& menu) const;
    void appendCommands(QList<MenuEntry>& menu) const;
    void appendSwitches(QList<MenuEntry>& menu) const;
    void appendWindows(QList<MenuEntry>& menu) const;
    void copyLastTranscript() const;

    DictationController& m_controller;
    const DictationSession& m_session;
    AppSettings& m_settings;
    Pasteboards& m_pasteboards;
    Windows& m_windows;
    std::function<void()> m_quit;
};

} // namespace tulvane
