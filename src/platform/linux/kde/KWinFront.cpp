#include <base/Log.h>
#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KWinFront.h>

#include <QCoreApplication>
#include <QDBusMessage>
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
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return message;
}

/// Where our object is on the bus.
QString objectOf(const QString& name)
{
    return u'/' + QString(name).replace(u'-', u'_');
}

QDBusMessage scripting(const QString& method, const QVariantList& arguments)
{
    return call(QStringLiteral("/Scripting"), QStringLiteral("org.kde.kwin.Scripting"), method, arguments);
}

} // namespace

KWinFront::KWinFront(std::shared_ptr<LastingBus> bus)
    : m_bus(std::move(bus)),
      m_watcher(kwin, m_bus->connection()),
      m_name(QStringLiteral("tulvane-front-%1").arg(QCoreApplication::applicationPid()))
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& after) { kwinChanged(after); });
    connect(m_bus.get(), &LastingBus::lost, this, &KWinFront::forget);
    connect(m_bus.get(), &LastingBus::returned, this, &KWinFront::listen);
    listen();
}

KWinFront::~KWinFront()
{
    m_bus->connection().unregisterObject(objectOf(m_name));
    m_bus->connection().send(scripting(QStringLiteral("unloadScript"), {m_name}));
}

void KWinFront::listen()
{
    QDBusConnection bus = m_bus->connection();
    bus.registerObject(objectOf(m_name), this, QDBusConnection::ExportScriptableSlots);
    m_watcher.setConnection(bus);
    m_loads = 0;
    load();
}

void KWinFront::load()
{
    auto file = std::make_shared<QTemporaryFile>();
    if (!file->open()) {
        qCWarning(lcInsertion, "No file for KWin's script");
        return;
    }
    const QDBusConnection bus = m_bus->connection();
    file->write(QString::fromUtf8(script).arg(bus.baseService(), objectOf(m_name)).toUtf8());
    file->close();
    ++m_loads;
    // KWin has read the file when the script runs.
    whenAnswered<int>(bus.asyncCall(scripting(QStringLiteral("loadScript"), {file->fileName(), m_name})),
                      this, [this, file, round = ++m_round](const QDBusPendingReply<int>& number) {
                          QTimer::singleShot(std::chrono::seconds(2), this, [file] {});
                          if (round == m_round)
                              loaded(number);
                      });
}

void KWinFront::loaded(const QDBusPendingReply<int>& number)
{
    if (number.isValid() && number.value() >= 0) {
        m_kwin = number.reply().service();
        start(number.value());
    } else if (number.error().type() != QDBusError::ServiceUnknown) {
        loadAgain();
    }
}

void KWinFront::loadAgain()
{
    // It has its name before it takes scripts; or it has ours already, from a call whose answer was lost.
    constexpr int mostLoads = 20;
    if (m_loads == mostLoads) {
        qCWarning(lcInsertion, "KWin takes no script");
        return;
    }
    m_bus->connection().send(scripting(QStringLiteral("unloadScript"), {m_name}));
    QTimer::singleShot(std::chrono::seconds(1), this, [this, round = ++m_round] {
        if (round == m_round)
            load();
    });
}

void KWinFront::start(int script)
{
    // KWin 5 and KWin 6 have it at different places; the one that is not there answers with an error.
    const QString interface = QStringLiteral("org.kde.kwin.Script");
    const QDBusConnection bus = m_bus->connection();
    bus.send(call(QStringLiteral("/%1").arg(script), interface, QStringLiteral("run"), {}));
    bus.send(call(QStringLiteral("/Scripting/Script%1").arg(script), interface, QStringLiteral("run"), {}));
}

void KWinFront::kwinChanged(const QString& after)
{
    forget();
    m_loads = 0;
    if (!after.isEmpty())
        load();
}

void KWinFront::forget()
{
    ++m_round;
    m_kwin.clear();
    front({}, {}, 0, false, false);
}

void KWinFront::front(const QString& id, const QString& resourceClass, int process, bool isX11,
                      bool isFullScreen)
{
    // On a bus every program of the user may call; KWin alone knows.
    if (calledFromDBus() && message().service() != m_kwin)
        return;
    m_current = {id, resourceClass, static_cast<quint32>(process), isX11, isFullScreen};
    const auto changed = m_changed;
    if (changed)
        changed();
}

} // namespace tulvane
