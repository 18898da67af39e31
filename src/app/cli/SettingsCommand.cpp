#include <app/cli/SettingsCommand.h>

#include <app/cli/CommandSyntax.h>
#include <settings/SettingAccess.h>
#include <settings/SettingKeys.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <optional>

namespace tulvane::cli {

namespace {

/// The value as a JSON literal on one line.
QString literal(const QVariant& value)
{
    const QJsonDocument document(QJsonArray{QJsonValue::fromVariant(value)});
    const QByteArray array = document.toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QString permittedText(const SettingDefinition& definition, const QStringList& modelIDs)
{
    switch (definition.kind) {
    case SettingKind::enumeration:
        return definition.rawValues.join(QStringLiteral(", "));
    case SettingKind::text:
        return modelIDs.join(QStringLiteral(", "));
    case SettingKind::boolean:
    case SettingKind::plainBoolean:
        return QStringLiteral("true, false");
    case SettingKind::integer: {
        const IntegerSteps steps = definition.integers.value_or(IntegerSteps{});
        return QStringLiteral("%1 to %2 in steps of %3").arg(steps.least).arg(steps.most).arg(steps.step);
    }
    }
    Q_UNREACHABLE();
}

int list(Console& console, const AppSettings& settings)
{
    for (const SettingDefinition& definition : settingsTable())
        console.out << definition.key << " = " << literal(liveValue(settings, definition)) << '\n';
    return ExitStatus::done;
}

int get(Console& console, const AppSettings& settings, const SettingDefinition& definition)
{
    console.out << liveValue(settings, definition).toString() << '\n';
    return ExitStatus::done;
}

int assign(Console& console, AppSettings& settings, const SettingDefinition& definition, const QVariant& value)
{
    std::optional<QString> problem;
    const auto listening = QObject::connect(
        &settings, &AppSettings::writeFailed, &settings,
        [&problem](const QString&, const DefaultsError& error) { problem = error.description(); });
    const bool assigned = assignValue(settings, definition, value);
    QObject::disconnect(listening);
    if (!assigned)
        problem = QStringLiteral("%1 could not be set.").arg(definition.key);
    return problem ? fail(console, *problem) : ExitStatus::done;
}

CommandSyntax makeSyntax()
{
    CommandSyntax syntax(QStringLiteral("settings"), QStringLiteral("Shows and changes the stored settings."));
    syntax.addWord(QStringLiteral("action"), QStringLiteral("list, get or set"),
                   QStringLiteral("list | get KEY | set KEY VALUE"));
    syntax.addWord(QStringLiteral("key"), QStringLiteral("a setting's name, as listed"), QStringLiteral(" "));
    syntax.addWord(QStringLiteral("value"), QStringLiteral("one of the permitted values"), QStringLiteral(" "));
    syntax.setRemark(QStringLiteral("A value that begins with a dash comes after --."));
    return syntax;
}

} // namespace

int runSettings(const QStringList& arguments, Console& console, AppSettings& settings,
                const QStringList& modelIDs)
{
    return 0;
}

} // namespace tulvane::cli
