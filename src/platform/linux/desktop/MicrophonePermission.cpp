#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/MicrophonePermission.h>

#include <QDBusArgument>
#include <QDBusServiceWatcher>
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

MicrophonePermission::MicrophonePermission(const QDBusConnection& bus, const QString& program)
    : m_bus(bus),
      m_program(program)
{
    if (!m_bus.isConnected()) {
        m_isAnswered = true;
        return;
    }
    m_bus.connect(store, storePath, store, QStringLiteral("Changed"), this, SLOT(noteChange(QDBusMessage)));
    auto* const watcher =
        new QDBusServiceWatcher(store, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &MicrophonePermission::ask);
    ask();
}

MicrophonePermission::~MicrophonePermission() = default;

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
    whenAnswered<>(m_bus.asyncCall(call), this, [this](const auto& answer) {
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
