#include <platform/linux/gnome/GSettings.h>

#include <QProcess>

namespace tulvane {

std::optional<QString> GSettings::run(const QStringList& words) const
{
    constexpr int patience = 3000; // ms
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("gsettings"), words);
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

std::optional<QString> GSettings::get(const QString& schema, const QString& name) const
{
    return run({QStringLiteral("get"), schema, name});
}

bool GSettings::set(const QString& schema, const QString& name, const QString& value) const
{
    return run({QStringLiteral("set"), schema, name, value}).has_value();
}

void GSettings::reset(const QString& schema) const
{
    (void)run({QStringLiteral("reset-recursively"), schema});
}

std::vector<GSettings::Setting> GSettings::all(const QString& schema) const
{
    std::vector<Setting> settings;
    // Each line is the schema, the setting and its value.
    for (const QString& line :
         run({QStringLiteral("list-recursively"), schema}).value_or(QString()).split(u'\n')) {
        const QString value = line.section(u' ', 2);
        if (!value.isEmpty())
            settings.push_back({line.section(u' ', 1, 1), value});
    }
    return settings;
}

QStringList GSettings::textsIn(const QString& value)
{
    QStringList texts;
    QString current;
    QChar quote;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar character = value[i];
        if (quote.isNull()) {
            if (character == u'\'' || character == u'"')
                quote = character;
        } else if (character == u'\\' && i + 1 < value.size()) {
            current += value[++i];
        } else if (character == quote) {
            texts.append(std::exchange(current, {}));
            quote = {};
        } else {
            current += character;
        }
    }
    return texts;
}

QString GSettings::text(const QString& text)
{
    QString escaped = text;
    escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'\'', QStringLiteral("\\'"));
    return u'\'' + escaped + u'\'';
}

QString GSettings::list(const QStringList& texts)
{
    if (texts.isEmpty())
        return QStringLiteral("@as []");
    QStringList quoted;
    for (const QString& each : texts)
        quoted.append(text(each));
    return u'[' + quoted.join(QStringLiteral(", ")) + u']';
}

} // namespace tulvane
