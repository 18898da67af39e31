#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QMap>
#include <QObject>

namespace tulvane::test {

/// A desktop's settings portal with the answers that the test gives it.
class SettingsPortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    using Key = std::pair<QString, QString>;

    /// On the bus at this address, under the portal's name, until it goes.
    explicit SettingsPortal(const QString& bus, const QMap<Key, QVariant>& values = {})
        : m_bus(QDBusConnection::connectToBus(bus, name())),
          m_values(values)
    {
        qRegisterMetaType<QDBusVariant>("QDBusVariant"); // else the first signal is not passed on
        m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        if (!m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")))
            qFatal("there is a portal already");
    }
    ~SettingsPortal() override { QDBusConnection::disconnectFromBus(name()); }

    void change(const Key& key, const QVariant& value)
    {
        m_values[key] = value;
        Q_EMIT SettingChanged(key.first, key.second, QDBusVariant(value));
    }

    inline static const Key colorScheme{QStringLiteral("org.freedesktop.appearance"),
                                        QStringLiteral("color-scheme")};
    inline static const Key animations{QStringLiteral("org.gnome.desktop.interface"),
                                       QStringLiteral("enable-animations")};
    inline static const Key durations{QStringLiteral("org.kde.kdeglobals.KDE"),
                                      QStringLiteral("AnimationDurationFactor")};

public Q_SLOTS:
    // As the portal answers: a variant in a variant.
    QDBusVariant Read(const QString& space, const QString& key, const QDBusMessage& call)
    {
        const auto found = m_values.constFind({space, key});
        if (found != m_values.cend())
            return QDBusVariant(QVariant::fromValue(QDBusVariant(*found)));
        call.setDelayedReply(true);
        m_bus.send(call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                         QStringLiteral("Requested setting not found")));
        return {};
    }

Q_SIGNALS:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    static QString name() { return QStringLiteral("settings-portal"); }

    QDBusConnection m_bus;
    QMap<Key, QVariant> m_values;
};

} // namespace tulvane::test
