#pragma once

#include <platform/linux/gnome/GSettings.h>

#include <QElapsedTimer>

namespace tulvane {

/// The key bindings that users of GNOME have made themselves, in its keyboard settings: each runs a command.
/// Main thread.
class CustomBindings final {
public:
    struct Binding {
        QString path; ///< where the settings keep it
        QString name;
        QString command;
        QString keys; ///< "<Control><Alt>d"
    };

    /// Of the settings daemon's schema.
    static const QString mediaKeys;
    static const QString listName;
    static const QString customSchema; ///< for a path behind it

    explicit CustomBindings(const GSettings& settings) : m_settings(settings) {}

    /// All but the one at `ours`.
    [[nodiscard]] std::vector<Binding> besides(const QString& ours) const;
    /// Whether one of these, with keys, runs “tulvane toggle”. Read anew after some seconds: the desktop asks
    /// thirty times a second while such a key is held.
    [[nodiscard]] bool haveToggleBesides(const QString& ours);
    /// Whether this command is that one, by whatever path.
    [[nodiscard]] static bool isToggle(const QString& command);

private:
    [[nodiscard]] Binding read(const QString& path) const;

    GSettings m_settings;
    bool m_hasToggle = false;
    QElapsedTimer m_knownSince;
};

} // namespace tulvane
