#include "ChromiumTarget.h"

#include <support/Await.h>

#include <QFile>
#include <QJsonArray>
#include <QUrl>

#include <stdexcept>

namespace tulvane::test {

namespace {

constexpr char pageSource[] =
    "<!doctype html><meta charset=utf-8><title>target</title>"
    "<textarea id=field autofocus rows=20 cols=80></textarea><button>Other</button>";

QString writePage(const VirtualDesktop& desktop)
{
    QFile file(desktop.home() + QStringLiteral("/target.html"));
    if (!file.open(QIODevice::WriteOnly) || file.write(pageSource) < 0)
        throw std::runtime_error("the page cannot be written");
    return QUrl::fromLocalFile(file.fileName()).toString();
}

} // namespace

ChromiumTarget::ChromiumTarget(VirtualDesktop& desktop) : m_browser(startBrowser(desktop), '\0')
{
    attach();
    if (!waitUntil([this] { return focus() == u"field"; }))
        throw std::runtime_error("the page did not get the focus");
}

QProcess& ChromiumTarget::startBrowser(VirtualDesktop& desktop)
{
    // The debugging pipe is read from descriptor 3 and written to 4: they become the ends that a QProcess
    // holds. The shell turns into the browser. A machine of its own for the test needs no sandbox, and may
    // forbid one.
    const QString command = QStringLiteral(
        "exec chromium --remote-debugging-pipe --no-sandbox --no-first-run --no-default-browser-check "
        "--disable-gpu --disable-dev-shm-usage --password-store=basic --disable-background-networking "
        "--disable-component-update --disable-sync --user-data-dir=\"$HOME/browser\" \"$1\" 3<&0 4>&1 1>&2 "
        "</dev/null");
    return desktop.start(QStringLiteral("sh"), {QStringLiteral("-c"), command, QStringLiteral("sh"),
                                                QStringLiteral("--app=") + writePage(desktop)});
}

void ChromiumTarget::attach()
{
    QString page;
    const bool found = waitUntil([&] {
        const QJsonArray targets = command("Target.getTargets", {})[QStringLiteral("targetInfos")].toArray();
        for (const QJsonValue& target : targets) {
            if (target[QStringLiteral("type")] == QStringLiteral("page"))
                page = target[QStringLiteral("targetId")].toString();
        }
        return !page.isEmpty();
    });
    if (!found)
        throw std::runtime_error("the browser shows no page");
    m_session =
        command("Target.attachToTarget", {{QStringLiteral("targetId"), page},
                                          {QStringLiteral("flatten"), true}})[QStringLiteral("sessionId")]
            .toString();
}

QJsonObject ChromiumTarget::command(const char* method, const QJsonObject& parameters)
{
    QJsonObject request{{QStringLiteral("method"), QString::fromLatin1(method)},
                        {QStringLiteral("params"), parameters}};
    if (!m_session.isEmpty())
        request[QStringLiteral("sessionId")] = m_session;
    return m_browser.ask(request)[QStringLiteral("result")].toObject();
}

QString ChromiumTarget::evaluate(const char* expression)
{
    const QJsonObject result =
        command("Runtime.evaluate", {{QStringLiteral("expression"), QString::fromLatin1(expression)}});
    return result[QStringLiteral("result")][QStringLiteral("value")].toString();
}

QByteArray ChromiumTarget::text()
{
    return evaluate("document.getElementById('field').value").toUtf8();
}

void ChromiumTarget::clear()
{
    std::ignore = evaluate("document.getElementById('field').value = ''");
}

QString ChromiumTarget::focus()
{
    return evaluate("document.hasFocus() && document.activeElement ? document.activeElement.id : ''");
}

} // namespace tulvane::test
