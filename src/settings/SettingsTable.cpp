#include <settings/AppLanguage.h>
#include <settings/AppearanceMode.h>
#include <settings/HotkeyMode.h>
#include <settings/InsertionMethod.h>
#include <settings/ModifierHotkey.h>
#include <settings/SettingKeys.h>
#include <settings/SettingsTable.h>
#include <settings/TranscriptionLanguage.h>

#include <algorithm>

namespace tulvane {

namespace {

constexpr IntegerSteps recordingSeconds{10, 1800, 10};
constexpr IntegerSteps typingSpeeds{15, 120, 5};

template <StoredEnumeration E>
SettingDefinition enumeration(const QString& key, E defaultValue)
{
    SettingDefinition definition{key, SettingKind::enumeration, rawValue(defaultValue), {}, {}};
    for (const E value : allCases<E>())
        definition.rawValues.append(rawValue(value));
    return definition;
}

SettingDefinition text(const QString& key, const QString& defaultValue)
{
    return {key, SettingKind::text, defaultValue, {}, {}};
}

SettingDefinition enabled(const QString& key)
{
    return {key, SettingKind::boolean, true, {}, {}};
}

SettingDefinition plainFlag(const QString& key)
{
    return {key, SettingKind::plainBoolean, false, {}, {}};
}

SettingDefinition integer(const QString& key, qint64 defaultValue, const IntegerSteps& permitted)
{
    return {key, SettingKind::integer, defaultValue, {}, permitted};
}

SettingDefinition keptForOthers(const QString& key, SettingKind kind, const QVariant& defaultValue)
{
    return {key, kind, defaultValue, {}, {}, SettingWriter::others};
}

QList<SettingDefinition> makeTable()
{
    using namespace settingKeys;
    return {
        enumeration(hotkeyMode, HotkeyMode::toggle),
        enumeration(modifierHotkey, ModifierHotkey::none),
        enumeration(language, TranscriptionLanguage::norwegianBokmal),
        text(selectedModelID, QStringLiteral("nb-whisper-medium-q5_0")),
        enumeration(insertionMethod, InsertionMethod::paste),
        enabled(restoreClipboard),
        enabled(playSounds),
        enabled(showHUD),
        enabled(autoCapitalize),
        enabled(appendTrailingSpace),
        text(vocabularyPrompt, QStringLiteral("")),
        integer(maxRecordingSeconds, 300, recordingSeconds),
        plainFlag(hasCompletedOnboarding),
        enabled(showInDock),
        integer(typingWordsPerMinute, 40, typingSpeeds),
        enumeration(appLanguage, AppLanguage::norwegian),
        keptForOthers(clipboardExpirySeconds, SettingKind::integer, qint64{120}),
        keptForOthers(hapticFeedback, SettingKind::boolean, true),
        keptForOthers(keyboardAutoInsert, SettingKind::boolean, false),
        enumeration(appearance, AppearanceMode::system),
        plainFlag(hideSetupChecklist),
        plainFlag(hidePrivacyCard),
    };
}

bool isNumber(const QVariant& value)
{
    const int type = value.typeId();
    return type == QMetaType::LongLong || type == QMetaType::ULongLong || type == QMetaType::Double;
}

/// The string that the plain string accessor of user defaults gives; invalid where it gives none.
QVariant plainString(const QVariant& stored)
{
    if (stored.typeId() == QMetaType::QString || isNumber(stored))
        return stored.toString();
    return {};
}

/// What the plain boolean accessor of user defaults gives.
bool plainBoolean(const QVariant& stored)
{
    if (stored.typeId() == QMetaType::Bool)
        return stored.toBool();
    if (isNumber(stored))
        return stored.toDouble() != 0.0;
    const QString text = stored.typeId() == QMetaType::QString ? stored.toString() : QString();
    return text.compare(u"yes", Qt::CaseInsensitive) == 0 || text.compare(u"true", Qt::CaseInsensitive) == 0;
}

} // namespace

const QList<SettingDefinition>& settingsTable()
{
    static const QList<SettingDefinition> table = makeTable();
    return table;
}

const SettingDefinition* findSetting(const QString& key)
{
    const QList<SettingDefinition>& table = settingsTable();
    const auto found = std::ranges::find(table, key, &SettingDefinition::key);
    return found == table.end() ? nullptr : &*found;
}

QVariant loadedValue(const SettingDefinition& definition, const QVariant& stored)
{
    bool makesSense = false;
    QVariant value = stored;
    switch (definition.kind) {
    case SettingKind::enumeration:
        makesSense =
            stored.typeId() == QMetaType::QString && definition.rawValues.contains(stored.toString());
        break;
    case SettingKind::text:
        value = plainString(stored);
        makesSense = value.isValid();
        break;
    case SettingKind::boolean:
        makesSense = stored.typeId() == QMetaType::Bool;
        break;
    case SettingKind::plainBoolean:
        return plainBoolean(stored);
    case SettingKind::integer:
        makesSense = stored.typeId() == QMetaType::LongLong;
        break;
    }
    return makesSense ? value : definition.defaultValue;
}

} // namespace tulvane
