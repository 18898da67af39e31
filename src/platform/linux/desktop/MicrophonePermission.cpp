#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/MicrophonePermission.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QEventLoop>
#include <QMap>
#include <QStringList>
#include <QTimer>

namespace tulvane {

namespace {

const QString store = QStringLiteral("org.freedesktop.impl.portal.PermissionStore");
const QString storePath = QStringLiteral("/org/freedesktop/impl/portal/PermissionStore");
const QString table = QStringLiteral("devices");
const QString microphone = QStringLiteral("microphone");

} // namespace

MicrophonePermission::MicrophonePermission(std::shared_ptr<LastingBus> bus, const QString& program)
    : m_bus(std::move(bus)),
      m_watcher(store, m_bus->connection(), QDBusServiceWatcher::WatchForRegistration),
      m_program(program)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &MicrophonePermission::ask);
    connect(m_bus.get(), &LastingBus::returned, this, &MicrophonePermission::listen);
    listen();
}

MicrophonePermission::~MicrophonePermission() = default;

void MicrophonePermission::listen()
{
    QDBusConnection bus = m_bus->connection();
    if (!bus.isConnected()) {
        m_isAnswered = true;
        return;
    }
    m_watcher.setConnection(bus);
    bus.connect(store, storePath, store, QStringLiteral("Changed"), this, SLOT(noteChange(QDBusMessage)));
    ask();
}

void MicrophonePermission::waitForAnswer(std::chrono::milliseconds limit) const
{
    if (m_isAnswered)
        return;
    QEventLoop loop;
    connect(this, &MicrophonePermission::answered, &loop, &QEventLoop::quit);
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
}

void MicrophonePermission::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(store, storePath, store, QStringLiteral("Lookup"));
    call << table << microphone;
    call.setAutoStartService(false);
    whenAnswered<>(m_bus->connection().asyncCall(call), this, [this](const auto& answer) {
        // An error: there is no store, or no program has ever been decided about.
        if (const QDBusMessage reply = answer.reply(); reply.type() == QDBusMessage::ReplyMessage)
            note(reply.arguments().value(0));
        m_isAnswered = true;
        Q_EMIT answered();
    });
}

void MicrophonePermission::noteChange(const QDBusMessage& signal)
{
    // Table, entry, whether it was deleted, its data, and every program's permissions.
    const QVariantList values = signal.arguments();
    if (values.value(0) == table && values.value(1) == microphone)
        values.value(2).toBool() ? note({}) : note(values.value(4));
}

void MicrophonePermission::note(const QVariant& permissions)
{
    QMap<QString, QStringList> programs;
    if (permissions.canConvert<QDBusArgument>())
        permissions.value<QDBusArgument>() >> programs;
    m_isDenied = programs.value(m_program).contains(QStringLiteral("no"));
}

} // namespace tulvane
