#include <base/Log.h>
#include <platform/linux/kde/KWinFront.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTemporaryFile>
#include <QTimer>

#include <memory>

namespace tulvane {

namespace {

const QString kwin = QStringLiteral("org.kde.KWin");

/// %1: our name on the bus. %2: our object.
constexpr const char* script = R"(
function tell(window) {
    if (!window) {
        callDBus("%1", "%2", "com.dunio.Tulvane.Front", "front", "", "", 0, false, false);
        return;
    }
    callDBus("%1", "%2", "com.dunio.Tulvane.Front", "front", String(window.internalId), String(window.resourceClass),
             window.pid, !!window.windowId, !!window.fullScreen);
}
if (workspace.clientActivated) {
    workspace.clientActivated.connect(tell);
    tell(workspace.activeClient);
} else {
    workspace.windowActivated.connect(tell);
    tell(workspace.activeWindow);
}
)";

QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                  const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kwin, path, interface, method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage scripting(const QString& method, const QVariantList& arguments)
{
    return call(QStringLiteral("/Scripting"), QStringLiteral("org.kde.kwin.Scripting"), method, arguments);
}

} // namespace

KWinFront::KWinFront(QDBusConnection bus)
    : m_bus(std::move(bus)),
      m_name(QStringLiteral("tulvane-front-%1").arg(QCoreApplication::applicationPid()))
{
    m_bus.registerObject(u"/" + QString(m_name).replace(u'-', u'_'), this,
                         QDBusConnection::ExportScriptableSlots);
    m_bus.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                  QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), {kwin},
                  QString(), this, SLOT(kwinChanged(QString, QString, QString)));
    load();
}

KWinFront::~KWinFront()
{
    m_bus.unregisterObject(u"/" + QString(m_name).replace(u'-', u'_'));
    m_bus.send(scripting(QStringLiteral("unloadScript"), {m_name}));
}

void KWinFront::load()
{
    auto file = std::make_shared<QTemporaryFile>();
    if (!file->open()) {
        qCWarning(lcInsertion, "No file for KWin's script");
        return;
    }
    const QString path = u"/" + QString(m_name).replace(u'-', u'_');
    file->write(QString::fromUtf8(script).arg(m_bus.baseService(), path).toUtf8());
    file->close();
    auto* const watcher = new QDBusPendingCallWatcher(
        m_bus.asyncCall(scripting(QStringLiteral("loadScript"), {file->fileName(), m_name})), this);
    // KWin has read the file when the script runs.
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, file] {
        const QDBusPendingReply<int> number(*watcher);
        watcher->deleteLater();
        if (number.isValid() && number.value() >= 0)
            start(number.value());
        else
            qCWarning(lcInsertion, "KWin takes no script: %ls", qUtf16Printable(number.error().message()));
        QTimer::singleShot(std::chrono::seconds(2), this, [file] {});
    });
}

void KWinFront::start(int script)
{
    // KWin 5 and KWin 6 have it at different places; the one that is not there answers with an error.
    const QString interface = QStringLiteral("org.kde.kwin.Script");
    m_bus.send(call(QStringLiteral("/%1").arg(script), interface, QStringLiteral("run"), {}));
    m_bus.send(call(QStringLiteral("/Scripting/Script%1").arg(script), interface, QStringLiteral("run"), {}));
}

void KWinFront::kwinChanged(const QString&, const QString&, const QString& after)
{
    front({}, {}, 0, false, false);
    if (!after.isEmpty())
        load();
}

void KWinFront::front(const QString& id, const QString& resourceClass, int process, bool isX11,
                      bool isFullScreen)
{
    // On a bus every program of the user may call; KWin alone knows.
    if (calledFromDBus() && message().service() != m_bus.interface()->serviceOwner(kwin).value())
        return;
    m_current = {id, resourceClass, static_cast<quint32>(process), isX11, isFullScreen};
    const auto changed = m_changed;
    if (changed)
        changed();
}

} // namespace tulvane
