#pragma once

#include <settings/AppSettings.h>
#include <settings/SettingsTable.h>

#include <QStringList>
#include <QVariant>

namespace tulvane {

/// The live value of a preference by its key, in stored form (QString, bool or qint64). Main thread.
[[nodiscard]] QVariant liveValue(const AppSettings& settings, const SettingDefinition& definition);

/// Assigns a value in stored form to the property, as the settings page would. False, with nothing changed,
/// for a preference that this system does not write and for a value of another form. Main thread.
[[nodiscard]] bool assignValue(AppSettings& settings, const SettingDefinition& definition,
                               const QVariant& value);

/// The value in stored form that a written word stands for: a raw value, "true" or "false", a whole number,
/// or for a text the word itself. None where the preference does not permit it. A model identifier is one of
/// `modelIDs`, the catalogue's.
[[nodiscard]] std::optional<QVariant> permittedValue(const SettingDefinition& definition, const QString& word,
                                                     const QStringList& modelIDs);

} // namespace tulvane
