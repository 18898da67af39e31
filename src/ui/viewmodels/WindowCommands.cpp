#include <dictation/Indicator.h>
#include <ui/viewmodels/WindowCommands.h>
#include <ui/windows/SettingsSelection.h>
#include <ui/windows/WindowKeys.h>

#include <utility>

namespace tulvane {

namespace {

QVariantList keysOf(bool mainWindow)
{
    QVariantList list;
    for (qsizetype i = 0; i < windowKeys().size(); ++i) {
        if (mainWindow || windowKeys().at(i).everywhere)
            list.append(QVariantMap{{QStringLiteral("index"), i},
                                    {QStringLiteral("sequence"), windowKeys().at(i).sequence()}});
    }
    return list;
}

} // namespace

WindowCommands::WindowCommands(SettingsSelection& selection, Windows& windows, std::function<void()> quit,
                               QObject* parent)
    : QObject(parent),
      m_selection(selection),
      m_windows(windows),
      m_quit(std::move(quit))
{
}

QVariantList WindowCommands::everywhere()
{
    return keysOf(false);
}

QVariantList WindowCommands::ofMainWindow()
{
    return keysOf(true);
}

void WindowCommands::run(int index)
{
    const WindowKey key = windowKeys().value(index);
    switch (key.command) {
    case WindowCommand::close:
        Q_EMIT closeWanted();
        break;
    case WindowCommand::quit:
        m_quit();
        break;
    case WindowCommand::settings:
        m_windows.showPage(SettingsTab::settings);
        break;
    case WindowCommand::setupGuide:
        m_windows.showOnboarding();
        break;
    case WindowCommand::page:
        m_selection.setTab(key.page);
        break;
    case WindowCommand::nextPage:
        turnPage(1);
        break;
    case WindowCommand::previousPage:
        turnPage(-1);
        break;
    case WindowCommand::search:
        m_selection.setTab(SettingsTab::history);
        Q_EMIT searchWanted();
        break;
    }
}

void WindowCommands::turnPage(int steps)
{
    const auto tabs = allCases<SettingsTab>();
    const int count = static_cast<int>(tabs.size());
    const int next = (static_cast<int>(m_selection.tab()) + steps + count) % count;
    m_selection.setTab(static_cast<SettingsTab>(next));
}

} // namespace tulvane
