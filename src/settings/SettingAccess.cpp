#include <settings/SettingAccess.h>
#include <settings/SettingKeys.h>

#include <QMetaProperty>

namespace tulvane {

namespace {

template <class... E>
struct Enumerations {
    /// The raw value of one of these enumerations' values, or the value itself.
    static QVariant rawForm(const QVariant& live)
    {
        QVariant form = live;
        (void)((live.metaType() == QMetaType::fromType<E>() && (form = rawValue(live.value<E>()), true)) ||
               ...);
        return form;
    }

    /// What a property of this type holds for the stored form; invalid where it holds nothing of that form.
    static QVariant liveForm(QMetaType type, const QVariant& stored)
    {
        QVariant form = stored.metaType() == type ? stored : QVariant();
        (void)((type == QMetaType::fromType<E>() && (form = fromStored<E>(stored), true)) || ...);
        return form;
    }

    template <class Enumeration>
    static QVariant fromStored(const QVariant& stored)
    {
        const auto value = fromRawValue<Enumeration>(stored.toString());
        return value ? QVariant::fromValue(*value) : QVariant();
    }
};

using Known = Enumerations<HotkeyMode, ModifierHotkey, TranscriptionLanguage, InsertionMethod, AppearanceMode,
                           AppLanguage>;

QMetaProperty property(const SettingDefinition& definition)
{
    const QMetaObject& settings = AppSettings::staticMetaObject;
    return settings.property(settings.indexOfProperty(definition.key.toUtf8().constData()));
}

std::optional<QVariant> when(bool permitted, const QVariant& value)
{
    return permitted ? std::optional(value) : std::nullopt;
}

} // namespace

QVariant liveValue(const AppSettings& settings, const SettingDefinition& definition)
{
    return Known::rawForm(property(definition).read(&settings));
}

bool assignValue(AppSettings& settings, const SettingDefinition& definition, const QVariant& value)
{
    const QMetaProperty target = property(definition);
    const QVariant live = Known::liveForm(target.metaType(), value);
    return live.isValid() && target.isWritable() && target.write(&settings, live);
}

std::optional<QVariant> permittedValue(const SettingDefinition& definition, const QString& word,
                                       const QStringList& modelIDs)
{
    switch (definition.kind) {
    case SettingKind::enumeration:
        return when(definition.rawValues.contains(word), word);
    case SettingKind::text:
        return when(definition.key != settingKeys::selectedModelID || modelIDs.contains(word), word);
    case SettingKind::boolean:
    case SettingKind::plainBoolean:
        return when(word == u"true" || word == u"false", word == u"true");
    case SettingKind::integer: {
        bool isNumber = false;
        const qint64 number = word.toLongLong(&isNumber);
        const bool permitted = isNumber && definition.integers && definition.integers->contains(number);
        // One spelling for each number: no sign, no blanks, no leading zeros.
        return when(permitted && QString::number(number) == word, number);
    }
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
