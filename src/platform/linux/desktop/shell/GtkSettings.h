#pragma once

#include <ports/Presentation.h>

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

/// What the settings files of the desktop's most common toolkit say about looks: "gtk-4.0/settings.ini", and
/// for what stands not there "gtk-3.0/settings.ini". Desktops without a settings portal keep their theme
/// there. Follows changes. Main thread; reads two small files.
class GtkSettings final : public QObject {
    Q_OBJECT

public:
    /// `folder`: the user's folder for settings, which holds the two.
    explicit GtkSettings(const QString& folder);
    ~GtkSettings() override;

    /// Null where no file says anything about it.
    [[nodiscard]] std::optional<Appearance> appearance() const { return m_appearance; }
    [[nodiscard]] std::optional<bool> reducedMotion() const { return m_reducedMotion; }

Q_SIGNALS:
    void changed();

private:
    void read();
    void note();
    void watch();
    [[nodiscard]] QString valueOf(const QString& key) const;

    QStringList m_files; ///< the one that counts most first
    QFileSystemWatcher m_watcher;
    std::optional<Appearance> m_appearance;
    std::optional<bool> m_reducedMotion;
};

} // namespace tulvane
