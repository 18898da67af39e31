#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace tulvane::test {

class VirtualDesktop;

/// A bar of the desktop's that shows status icons over the session bus. Throws std::runtime_error when it
/// does not answer.
class TrayHost final {
public:
    /// Without a host the icons are registered, and no bar shows them yet.
    explicit TrayHost(VirtualDesktop& desktop, bool hasHost = true);

    /// Waits until an icon is registered, or none is any more.
    void waitForIcon() { ask(QStringLiteral("wait")); }
    void waitUntilGone() { ask(QStringLiteral("gone")); }
    [[nodiscard]] bool hasIcon() { return ask(QStringLiteral("there")).toBool(); }
    [[nodiscard]] QJsonObject icon() { return ask(QStringLiteral("icon")).toObject(); }
    /// The lines from top to bottom.
    [[nodiscard]] QJsonArray menu() { return ask(QStringLiteral("menu")).toArray(); }
    /// The texts of the lines, "-" for a separator.
    [[nodiscard]] QStringList labels();
    /// The line with this text, also in a submenu. Throws where there is none.
    [[nodiscard]] QJsonObject line(const QString& label);
    /// Waits until there is such a line.
    [[nodiscard]] bool waitForLine(const QString& label);
    void click(const QString& label);
    /// The line that has this "id" in the menu.
    void clickNumber(int id) { ask(QStringLiteral("click %1").arg(id)); }
    void open() { ask(QStringLiteral("open")); }
    void activate() { ask(QStringLiteral("activate")); }
    void addHost() { ask(QStringLiteral("host")); }
    /// The bar dies.
    void kill();

private:
    QJsonValue ask(const QString& command);
    QJsonValue answer();

    QProcess& m_process;
};

} // namespace tulvane::test
