#include <platform/linux/keys/ShortcutFiles.h>

#include <QXmlStreamReader>

namespace tulvane {

QList<SymbolicHotKey> readOpenboxShortcuts(const QByteArray& file, const KeyLookup& keyOf)
{
    QList<SymbolicHotKey> hotKeys;
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
                hotKeys.append({true, *combination, {}});
        } else if (untitled && xml.isStartElement() && xml.name() == QLatin1String("action")) {
            hotKeys.last().title = xml.attributes().value(QLatin1String("name")).toString();
            untitled = false;
        }
    }
    return hotKeys;
}

} // namespace tulvane
