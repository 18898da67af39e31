#pragma once

#include <app/cli/Console.h>
#include <app/program/Migration.h>
#include <ports/LocalServices.h>
#include <ports/UserDefaults.h>
#include <settings/AppSettings.h>

#include <optional>

namespace tulvane {

/// The stored settings, opened when a command first needs them; trouble with the file is printed at once.
class StoredSettings final {
public:
    StoredSettings(LocalServices& services, cli::Console& console) : m_defaults(services.defaults())
    {
        const auto tell = [&console](const DefaultsError& error) {
            console.err << "tulvane: " << error.description() << Qt::endl;
        };
        m_settings.emplace(*m_defaults);
        if (m_settings->trouble())
            tell(*m_settings->trouble());
        QObject::connect(&*m_settings, &AppSettings::troubled, &*m_settings, tell);
    }
    /// What the earlier product kept comes over before a command writes.
    void migrate() { Migration(*m_defaults, Migration::standardParent()).run(); }
    [[nodiscard]] AppSettings& operator*() { return *m_settings; }
    /// A text that is no setting of the interface's; empty where there is none.
    [[nodiscard]] QString text(const char* key) const
    {
        return m_defaults->value(QLatin1String(key)).toString();
    }

private:
    std::shared_ptr<UserDefaults> m_defaults;
    std::optional<AppSettings> m_settings;
};

} // namespace tulvane
