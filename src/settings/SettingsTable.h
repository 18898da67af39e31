#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace tulvane {

/// How a preference is stored, and how it is read.
enum class SettingKind {
    enumeration,  ///< a string out of a few; any other, or anything else, reads as the default
    text,         ///< a string; a number reads as its digits
    boolean,      ///< true or false; anything else reads as the default
    plainBoolean, ///< a boolean; numbers other than 0, "yes" and "true" read as true, all else as false
    integer,      ///< 64 bits, signed; anything else, a floating-point number too, reads as the default
};

/// Who stores a preference.
enum class SettingWriter {
    thisSystem,
    others, ///< loaded and shown, never stored: what somebody else has put there stays as it is
};

/// The whole numbers that the settings page can reach.
struct IntegerSteps {
    qint64 least = 0;
    qint64 most = 0;
    qint64 step = 1; ///< counted from `least`

    [[nodiscard]] bool contains(qint64 number) const
    {
        return number >= least && number <= most && (number - least) % step == 0;
    }
};

/// One preference. Values are in their stored form: QString, bool or qint64.
struct SettingDefinition {
    QString key;
    SettingKind kind = SettingKind::text;
    QVariant defaultValue;
    QStringList rawValues;                ///< of an enumeration, in order
    std::optional<IntegerSteps> integers; ///< of an integer that the user can change
    SettingWriter writer = SettingWriter::thisSystem;
};

/// Every preference, in order. Any thread.
[[nodiscard]] const QList<SettingDefinition>& settingsTable();

/// None for a key that is no preference.
[[nodiscard]] const SettingDefinition* findSetting(const QString& key);

/// What a stored value (invalid where nothing is stored) counts as. Never fails: the default stands for what
/// is missing or makes no sense. The range is not looked at.
[[nodiscard]] QVariant loadedValue(const SettingDefinition& definition, const QVariant& stored);

} // namespace tulvane
