#include <platform/linux/desktop/DesktopWorkspace.h>
#include <platform/linux/desktop/SettingsPages.h>

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

/// Starts a program that goes on without us; its words go nowhere. False when there is no such program.
bool startDetached(const SettingsCommand& command)
{
    const QString path = QStandardPaths::findExecutable(command.program);
    if (path.isEmpty())
        return false;
    QProcess process;
    process.setProgram(path);
    process.setArguments(command.arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

bool handToDesktop(const QUrl& url)
{
    return startDetached({QStringLiteral("xdg-open"), {url.toString(QUrl::FullyEncoded)}});
}

} // namespace

DesktopWorkspace::DesktopWorkspace(QStringList desktops, QUrl helpPage)
    : m_desktops(std::move(desktops)),
      m_helpPage(std::move(helpPage))
{
}

bool DesktopWorkspace::open(const QUrl& url)
{
    return url.scheme() == u"x-apple.systempreferences" ? openSettings(url) : handToDesktop(url);
}

bool DesktopWorkspace::openSettings(const QUrl& pane) const
{
    const QList<SettingsCommand> pages = settingsPages(pane, m_desktops);
    if (std::ranges::any_of(pages, startDetached))
        return true;
    QUrl help = m_helpPage;
    help.setFragment(helpSection(pane));
    return handToDesktop(help);
}

bool DesktopWorkspace::reveal(const QString& folder)
{
    return QDir(folder).exists() && handToDesktop(QUrl::fromLocalFile(folder));
}

} // namespace tulvane
