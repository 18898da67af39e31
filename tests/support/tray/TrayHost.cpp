#include <support/Await.h>
#include <support/VirtualDesktop.h>
#include <support/tray/TrayHost.h>

#include <QJsonDocument>

#include <optional>
#include <stdexcept>
#include <tuple>

namespace tulvane::test {

namespace {

std::optional<QJsonObject> find(const QJsonArray& lines, const QString& label)
{
    for (const QJsonValue& value : lines) {
        const QJsonObject line = value.toObject();
        if (line[QStringLiteral("label")] == label)
            return line;
        if (const auto inner = find(line[QStringLiteral("children")].toArray(), label))
            return inner;
    }
    return std::nullopt;
}

} // namespace

TrayHost::TrayHost(VirtualDesktop& desktop, bool hasHost)
    : m_process(desktop.start(
          QStringLiteral("/usr/bin/python3"),
          hasHost ? QStringList{QStringLiteral(TULVANE_TRAY_HOST)}
                  : QStringList{QStringLiteral(TULVANE_TRAY_HOST), QStringLiteral("--without-host")}))
{
    answer();
}

QJsonValue TrayHost::ask(const QString& command)
{
    m_process.write(command.toUtf8() + '\n');
    return answer();
}

QJsonValue TrayHost::answer()
{
    // The icon that the bar asks in its turn may be one of this process.
    std::ignore =
        waitUntil([this] { return m_process.canReadLine() || m_process.state() == QProcess::NotRunning; });
    if (!m_process.canReadLine())
        throw std::runtime_error("the bar does not answer: " +
                                 m_process.readAllStandardError().toStdString());
    return QJsonDocument::fromJson("[" + m_process.readLine() + "]").array().at(0);
}

QStringList TrayHost::labels()
{
    QStringList list;
    for (const QJsonValue& value : menu()) {
        const QJsonObject line = value.toObject();
        list.append(line[QStringLiteral("type")] == QStringLiteral("separator")
                        ? QStringLiteral("-")
                        : line[QStringLiteral("label")].toString());
    }
    return list;
}

QJsonObject TrayHost::line(const QString& label)
{
    const auto found = find(menu(), label);
    if (!found)
        throw std::runtime_error("the menu has no line " + label.toStdString());
    return *found;
}

bool TrayHost::waitForLine(const QString& label)
{
    return waitUntil([&] { return find(menu(), label).has_value(); });
}

void TrayHost::click(const QString& label)
{
    clickNumber(line(label)[QStringLiteral("id")].toInt());
}

void TrayHost::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace tulvane::test
