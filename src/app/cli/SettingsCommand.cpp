#include <app/cli/CommandSyntax.h>
#include <app/cli/SettingsCommand.h>
#include <settings/SettingAccess.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
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

int assign(Console& console, AppSettings& settings, const SettingDefinition& definition,
           const QVariant& value)
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

/// What the words ask for: one of the three actions, and how many words it takes.
struct Action {
    QString name;
    QStringList words;
};

const QList<Action>& actions()
{
    static const QList<Action> all{
        {QStringLiteral("list"), {}},
        {QStringLiteral("get"), {QStringLiteral("KEY")}},
        {QStringLiteral("set"), {QStringLiteral("KEY"), QStringLiteral("VALUE")}},
    };
    return all;
}

void describeWords(CommandSyntax& syntax)
{
    syntax.addArgument(QStringLiteral("action"), QStringLiteral("What to do; \"settings list\" names every KEY."),
                   QStringLiteral("list | get KEY | set KEY VALUE"));
    syntax.setWordCount(1);
    syntax.setRemark(
        QStringLiteral("list shows values as JSON, get shows one as it is. set takes the values that "
                       "the settings page offers;\na VALUE that begins with a dash comes after --."));
}

/// What is wrong with the number of words after the action; none where nothing is.
std::optional<QString> wordProblem(const QStringList& words)
{
    const auto action = std::ranges::find(actions(), words.first(), &Action::name);
    if (action == actions().end())
        return QStringLiteral("there is no action “%1”.").arg(words.first());
    const qsizetype given = words.size() - 1;
    if (given < action->words.size())
        return action->words.at(given) + QStringLiteral(" is missing.");
    if (given > action->words.size())
        return QStringLiteral("“%1” is one word too many.").arg(words.at(action->words.size() + 1));
    return std::nullopt;
}

/// `set` with a key that is known: says what is wrong with the wish, or carries it out.
int set(const CommandSyntax& syntax, Console& console, AppSettings& settings,
        const SettingDefinition& definition, const QStringList& modelIDs)
{
    const QString word = syntax.words().at(2);
    if (definition.writer == SettingWriter::others)
        return syntax.usageError(
            console,
            QStringLiteral("%1 is kept for other programs; this one never changes it.").arg(definition.key));
    const std::optional<QVariant> value = permittedValue(definition, word, modelIDs);
    if (!value)
        return syntax.usageError(console,
                                 QStringLiteral("%1 cannot be “%2”; permitted: %3.")
                                     .arg(definition.key, word, permittedText(definition, modelIDs)));
    return assign(console, settings, definition, *value);
}

} // namespace

int runSettings(const QStringList& arguments, Console& console, AppSettings& settings,
                const QStringList& modelIDs)
{
    CommandSyntax syntax(QStringLiteral("settings"),
                         QStringLiteral("Shows and changes the stored settings."));
    describeWords(syntax);
    if (const std::optional<int> status = syntax.parse(arguments, console))
        return *status;
    const QStringList words = syntax.words();
    if (const std::optional<QString> problem = wordProblem(words))
        return syntax.usageError(console, *problem);
    if (words.first() == u"list")
        return list(console, settings);
    const SettingDefinition* const definition = findSetting(words.at(1));
    if (definition == nullptr)
        return syntax.usageError(console, QStringLiteral("there is no setting “%1”.").arg(words.at(1)));
    if (words.first() == u"get")
        return get(console, settings, *definition);
    return set(syntax, console, settings, *definition, modelIDs);
}

} // namespace tulvane::cli
