#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>

#include <optional>

namespace tulvane {

/// Our side of the input method service: an engine that types nothing by itself, takes no key, and commits
/// one text into the field that has the focus. Main thread.
class IBusEngine final : public QDBusVirtualObject {
    Q_OBJECT

public:
    static inline const QString name = QStringLiteral("tulvane");
    static inline const QString busName = QStringLiteral("org.freedesktop.IBus.Tulvane");
    enum class Purpose : quint32 { password = 8, pin = 9, terminal = 10 };

    /// The service reaches it over this connection, as long as this object lives.
    explicit IBusEngine(QDBusConnection connection);
    Q_DISABLE_COPY_MOVE(IBusEngine)
    ~IBusEngine() override;

    /// Forgets what the last field was.
    void reset();
    /// Whether a field has come since then, and the service has said what kind it is.
    [[nodiscard]] bool hasFocus() const { return m_hasFocus; }
    [[nodiscard]] bool knowsPurpose() const { return m_purpose.has_value(); }
    [[nodiscard]] bool isForPasswords() const;
    /// What stands before the caret and after it, as far as the field tells.
    [[nodiscard]] const QString& surroundings() const { return m_surroundings; }
    void commit(const QString& text);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void send(const QString& signal, const QVariantList& arguments = {});
    [[nodiscard]] QVariantList answer(const QDBusMessage& message);
    [[nodiscard]] QVariantList property(const QDBusMessage& message);

    QDBusConnection m_connection;
    QString m_path;
    int m_count = 0;
    bool m_hasFocus = false;
    std::optional<quint32> m_purpose;
    QString m_surroundings;
};

} // namespace tulvane
