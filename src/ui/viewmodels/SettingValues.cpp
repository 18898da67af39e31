#include <settings/AppSettings.h>
#include <ui/viewmodels/SettingValues.h>

#include <QQmlPropertyMap>

namespace tulvane {

QQmlPropertyMap* settingValues(AppSettings& settings, QObject* parent)
{
    auto* const values = new QQmlPropertyMap(parent);
    for (AnySetting* const setting : settings.all()) {
        values->insert(setting->key(), setting->value());
        QObject::connect(setting, &AnySetting::changed, values,
                         [values, setting] { values->insert(setting->key(), setting->value()); });
    }
    QObject::connect(values, &QQmlPropertyMap::valueChanged, values,
                     [values, &settings](const QString& key, const QVariant& written) {
                         AnySetting* const setting = settings.find(key);
                         // QML has one type for all numbers.
                         QVariant value = written;
                         if (setting->steps())
                             value.convert(QMetaType::fromType<qint64>());
                         if (!setting->setValue(value))
                             values->insert(key, setting->value());
                     });
    return values;
}

} // namespace tulvane
