#include <platform/linux/gnome/GSettings.h>

#include <QProcess>

#include <algorithm>
#include <memory>

namespace tulvane {

GSettings::Answers GSettings::run(const QList<QStringList>& calls) const
{
    constexpr int patience = 3000; // ms
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QStringList& words : calls) {
        auto& process = processes.emplace_back(std::make_unique<QProcess>());
        process->setProcessEnvironment(m_environment);
        process->setStandardErrorFile(QProcess::nullDevice());
        process->start(QStringLiteral("gsettings"), words);
    }
    Answers answers;
    for (const auto& process : processes) {
        // One that has ended while another was waited for is finished as well.
        const bool isFinished =
            process->state() == QProcess::NotRunning || process->waitForFinished(patience);
        const bool isTaken = isFinished && process->error() == QProcess::UnknownError &&
                             process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
        answers.push_back(isTaken
                              ? std::optional(QString::fromUtf8(process->readAllStandardOutput()).trimmed())
                              : std::nullopt);
    }
    return answers;
}

std::optional<QString> GSettings::get(const QString& schema, const QString& name) const
{
    return run({{QStringLiteral("get"), schema, name}}).front();
}

bool GSettings::set(const QString& schema, const QString& name, const QString& value) const
{
    return set(schema, {{name, value}});
}

bool GSettings::set(const QString& schema, const std::vector<Setting>& settings) const
{
    QList<QStringList> calls;
    for (const Setting& setting : settings)
        calls.append({QStringLiteral("set"), schema, setting.name, setting.value});
    return std::ranges::all_of(run(calls), [](const auto& answer) { return answer.has_value(); });
}

void GSettings::reset(const QString& schema) const
{
    (void)run({{QStringLiteral("reset-recursively"), schema}});
}

QString GSettings::describe(const QString& schema, const QString& name) const
{
    return run({{QStringLiteral("describe"), schema, name}}).front().value_or(QString());
}

std::vector<GSettings::Setting> GSettings::all(const QStringList& schemas) const
{
    QList<QStringList> calls;
    for (const QString& schema : schemas)
        calls.append({QStringLiteral("list-recursively"), schema});
    std::vector<Setting> settings;
    for (const auto& answer : run(calls)) {
        // Each line is the schema, the setting and its value.
        for (const QString& line : answer.value_or(QString()).split(u'\n')) {
            const QString value = line.section(u' ', 2);
            if (!value.isEmpty())
                settings.push_back({line.section(u' ', 1, 1), value, line.section(u' ', 0, 0)});
        }
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
