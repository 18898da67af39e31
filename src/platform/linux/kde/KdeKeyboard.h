#pragma once

#include <platform/linux/layout/XkbKeymap.h>

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace tulvane {

class LastingBus;

/// The keyboard layout that KDE's settings name, followed when the user chooses another. Main thread.
class KdeKeyboard final : public QObject {
    Q_OBJECT

public:
    /// `configHome` as in $XDG_CONFIG_HOME.
    KdeKeyboard(std::shared_ptr<LastingBus> bus, QString configHome);

    [[nodiscard]] const XkbKeymap& layout() const { return *m_layout; }
    [[nodiscard]] bool isThere() const { return m_layout.has_value(); }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void reload();

private:
    void listen();
    void read();

    std::shared_ptr<LastingBus> m_bus;
    QString m_file;
    QString m_names;
    std::optional<XkbKeymap> m_layout;
};

} // namespace tulvane
