#include <platform/linux/keys/ShortcutFiles.h>

#include <QMap>
#include <QStringList>
#include <QXmlStreamReader>

#include <utility>

namespace tulvane {

namespace {

/// What one provider (the commands, the window manager) holds.
struct Provider {
    QList<SymbolicHotkey> defaults;
    QList<SymbolicHotkey> custom;
    bool customReplacesDefaults = false;
};

void addEntry(Provider& provider, const QString& list, const QString& key, const QString& value,
              const KeyLookup& keyOf)
{
    if (list == QLatin1String("custom") && key == QLatin1String("override")) {
        provider.customReplacesDefaults = value == QLatin1String("true");
        return;
    }
    const auto combination = fromGtkAccelerator(key, keyOf);
    if (!combination)
        return;
    // An entry without an action has been switched off.
    (list == QLatin1String("custom") ? provider.custom : provider.defaults)
        .append({!value.isEmpty(), *combination, value});
}

} // namespace

QList<SymbolicHotkey> readXfceShortcuts(const QByteArray& file, const KeyLookup& keyOf)
{
    QMap<QString, Provider> providers;
    QStringList path;
    QXmlStreamReader xml(file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.name() != QLatin1String("property"))
            continue;
        if (xml.isStartElement()) {
            path.append(xml.attributes().value(QLatin1String("name")).toString());
            if (path.size() == 3)
                addEntry(providers[path[0]], path[1], path[2],
                         xml.attributes().value(QLatin1String("value")).toString(), keyOf);
        } else if (xml.isEndElement()) {
            path.removeLast();
        }
    }
    QList<SymbolicHotkey> hotkeys;
    for (const Provider& provider : std::as_const(providers))
        hotkeys += provider.customReplacesDefaults ? provider.custom : provider.defaults + provider.custom;
    return hotkeys;
}

} // namespace tulvane
