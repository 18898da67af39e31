#include <platform/linux/gnome/GnomeShell.h>

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

namespace tulvane {

int gnomeShellVersion(const QDBusConnection& bus)
{
    constexpr int answerLimit = 2000; // ms; the shell is busy when the user has just logged in
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.gnome.Shell"), QStringLiteral("/org/gnome/Shell"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question.setAutoStartService(false);
    question << QStringLiteral("org.gnome.Shell") << QStringLiteral("ShellVersion");
    const QDBusReply<QDBusVariant> answer = bus.call(question, QDBus::Block, answerLimit);
    return answer.isValid() ? answer.value().variant().toString().section(u'.', 0, 0).toInt() : 0;
}

} // namespace tulvane
