#include <platform/linux/keys/ShortcutFiles.h>

#include <QString>
#include <QStringList>

namespace tulvane {

namespace {

/// The first of three fields: the combinations in force, separated by tabs; the others are the default and a
/// title. A comma that belongs to a field has a backslash before it.
QStringList combinationsOf(const QString& value, QString& title)
{
    QStringList fields{QString()};
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == u'\\' && i + 1 < value.size()) {
            const QChar next = value[++i];
            fields.last().append(next == u't' ? QChar(u'\t') : next);
        } else if (value[i] == u',') {
            fields.append(QString());
        } else {
            fields.last().append(value[i]);
        }
    }
    title = fields.size() > 2 ? fields.at(2) : QString();
    return fields.first().split(u'\t', Qt::SkipEmptyParts);
}

} // namespace

QList<SymbolicHotkey> readKdeShortcuts(const QByteArray& file, const KeyLookup& keyOf)
{
    QList<SymbolicHotkey> hotkeys;
    const QStringList lines = QString::fromUtf8(file).split(u'\n');
    for (const QString& line : lines) {
        const qsizetype equals = line.indexOf(u'=');
        if (equals <= 0 || line.startsWith(u'[') || line.startsWith(QLatin1String("_k_friendly_name")))
            continue;
        QString title;
        for (const QString& text : combinationsOf(line.sliced(equals + 1).trimmed(), title)) {
            // A combination that the user has switched off is stored as "none", which is no key's name.
            if (const auto combination = fromQtAccelerator(text, keyOf))
                hotkeys.append({true, *combination, title.isEmpty() ? line.first(equals) : title});
        }
    }
    return hotkeys;
}

} // namespace tulvane
