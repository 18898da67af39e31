#pragma once

#include <platform/linux/gnome/GSettings.h>
#include <platform/linux/layout/XkbKeymap.h>

#include <QObject>

#include <memory>
#include <optional>

namespace tulvane {

class LastingBus;

/// The keyboard layout or the input method that the user types with, by the desktop's settings: the one used
/// last. Main thread.
class GnomeLayout final : public QObject {
    Q_OBJECT

public:
    /// Follows the settings over `bus`, the session's.
    GnomeLayout(const QProcessEnvironment& environment, std::shared_ptr<LastingBus> bus);
    Q_DISABLE_COPY_MOVE(GnomeLayout)
    ~GnomeLayout() override;

    /// None where the settings cannot be read. Reads them anew after each change.
    [[nodiscard]] const std::optional<XkbKeymap>& current();

    /// The input method's engine for it.
    [[nodiscard]] QString engine();

    /// The engine for the first of these sources, as the desktop's settings write them.
    [[nodiscard]] static QString engineOf(const QString& sources);
    /// By the settings of this moment.
    [[nodiscard]] static std::optional<XkbKeymap> read(const GSettings& settings);

private Q_SLOTS:
    void settingsChanged(const QString& prefix, const QStringList& changes, const QString& tag);

private:
    void listen();
    void forget();

    GSettings m_settings;
    std::shared_ptr<LastingBus> m_bus;
    std::optional<XkbKeymap> m_layout;
    bool m_isRead = false;
    QString m_engine; ///< empty until it is asked for
};

} // namespace tulvane
