#pragma once

#include <ports/StatusItem.h>
#include <ui/UiContext.h>

#include <QObject>

#include <functional>
#include <optional>

namespace tulvane {

/// The program's status item: an icon and a first line that follow the phase, the day's tally, the last
/// transcript, the dictation's commands, quick switches, and the ways into the windows. A view: it keeps
/// nothing but what it has shown. Main thread.
class MenuBarMenu final : public QObject {
    Q_OBJECT

public:
    /// More characters of a transcript than this do not fit into a menu.
    static constexpr qsizetype mostCharacters = 60;

    /// `context.windows` is set. `quit` ends the program; it is called from the event loop.
    MenuBarMenu(const UiContext& context, StatusItem& item, std::function<void()> quit);

    /// The name of the icon's symbol.
    [[nodiscard]] QString symbol() const;
    /// How it stands, in words.
    [[nodiscard]] QString statusLine() const;
    /// What dictating has brought today; none on a day without words.
    [[nodiscard]] std::optional<QString> todayLine() const;
    /// The whole menu as it is to be now.
    [[nodiscard]] QList<MenuEntry> entries() const;

    /// The text's first characters as a user counts them, with an ellipsis where there are more; on one line.
    [[nodiscard]] static QString shortened(const QString& text);

private:
    void follow();
    /// Shows the present state once the event loop is reached: what changes together is told as one.
    void noteChange();
    void update();

    [[nodiscard]] bool isSetUp() const;
    void appendReport(QList<MenuEntry>& menu) const;
    void appendCommands(QList<MenuEntry>& menu) const;
    void appendSwitches(QList<MenuEntry>& menu) const;
    void appendWindows(QList<MenuEntry>& menu) const;
    void copyLastTranscript() const;

    UiContext m_context;
    StatusItem& m_item;
    std::function<void()> m_quit;
    bool m_isNoted = false;
    QString m_shownSymbol;
    QString m_shownDescription;
    QList<MenuEntry> m_shown;
};

} // namespace tulvane
