#include <platform/linux/keys/ShortcutFiles.h>

#include <QXmlStreamReader>

namespace tulvane {

QList<SymbolicHotkey> readOpenboxShortcuts(const QByteArray& file, const KeyLookup& keyOf)
{
    QList<SymbolicHotkey> hotkeys;
    int depth = 0;
    bool untitled = false;
    QXmlStreamReader xml(file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.name() == QLatin1String("keybind")) {
            if (xml.isEndElement())
                --depth;
            // A binding within another one is the second key of a chain, and grabbed only after the first.
            if (!xml.isStartElement() || ++depth > 1)
                continue;
            const QString keys = xml.attributes().value(QLatin1String("key")).toString();
            const auto combination = fromOpenboxAccelerator(QStringView(keys).split(u' ').first(), keyOf);
            untitled = combination.has_value();
            if (combination)
                hotkeys.append({true, *combination, {}});
        } else if (untitled && xml.isStartElement() && xml.name() == QLatin1String("action")) {
            hotkeys.last().title = xml.attributes().value(QLatin1String("name")).toString();
            untitled = false;
        }
    }
    return hotkeys;
}

} // namespace tulvane
