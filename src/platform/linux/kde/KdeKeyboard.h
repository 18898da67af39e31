#pragma once

#include <platform/linux/layout/XkbKeymap.h>

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

/// The keyboard layout that KDE's settings name, followed when the user chooses another. Main thread.
class KdeKeyboard final : public QObject {
    Q_OBJECT

public:
    /// `configHome` as in $XDG_CONFIG_HOME.
    KdeKeyboard(QDBusConnection bus, QString configHome);

    [[nodiscard]] const XkbKeymap& layout() const { return *m_layout; }
    [[nodiscard]] bool isThere() const { return m_layout.has_value(); }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void reload();

private:
    void read();

    QString m_file;
    QString m_names;
    std::optional<XkbKeymap> m_layout;
};

} // namespace tulvane
