#include <app/cli/CommandSyntax.h>
#include <app/cli/SettingsCommand.h>
#include <settings/AppSettings.h>
#include <settings/InterfaceLanguage.h>

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

int list(Console& console, const AppSettings& settings)
{
    for (const AnySetting* const setting : settings.all())
        console.out << setting->key() << " = " << literal(setting->value()) << '\n';
    return ExitStatus::done;
}

int get(Console& console, const AnySetting& setting)
{
    console.out << setting.value().toString() << '\n';
    return ExitStatus::done;
}

int assign(Console& console, const AppSettings& settings, AnySetting& setting, const QVariant& value)
{
    std::optional<QString> problem;
    const auto listening = QObject::connect(&settings, &AppSettings::writeFailed, &settings,
                                            [&problem](const QString&, const DefaultsError& error) {
                                                // Only the answer: the interface of the running program
                                                // follows the change in its own language.
                                                const ScopedEnglish english;
                                                problem = error.description();
                                            });
    const bool assigned = setting.setValue(value);
    QObject::disconnect(listening);
    if (!assigned)
        problem = QStringLiteral("%1 could not be set.").arg(setting.key());
    if (problem)
        return fail(console, *problem);
    if (&setting == &settings.appLanguage)
        console.err << "The interface changes its language when Tulvane starts the next time." << Qt::endl;
    return ExitStatus::done;
}

/// What the words ask for: one of the three actions, and how many words it takes.
struct Action {
    QString name;
    QStringList operands;
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

void describeSyntax(CommandSyntax& syntax)
{
    syntax.addArgument(QStringLiteral("action"),
                       QStringLiteral("What to do; \"settings list\" names every KEY."),
                       QStringLiteral("list | get KEY | set KEY VALUE"));
    syntax.setOperandCount(1);
    syntax.setRemark(
        QStringLiteral("list shows values as JSON, get shows one as it is. set takes the values that "
                       "the settings page offers;\na VALUE that begins with a dash comes after --."));
}

/// What is wrong with the number of words after the action; none where nothing is.
std::optional<QString> operandProblem(const QStringList& operands)
{
    const auto action = std::ranges::find(actions(), operands.first(), &Action::name);
    if (action == actions().end())
        return QStringLiteral("there is no action “%1”.").arg(operands.first());
    const qsizetype given = operands.size() - 1;
    if (given < action->operands.size())
        return action->operands.at(given) + QStringLiteral(" is missing.");
    if (given > action->operands.size())
        return QStringLiteral("“%1” is one word too many.").arg(operands.at(action->operands.size() + 1));
    return std::nullopt;
}

/// `set` with a key that is known: says what is wrong with the wish, or carries it out.
int set(const CommandSyntax& syntax, Console& console, const AppSettings& settings, AnySetting& setting,
        const QStringList& modelIDs)
{
    const QString text = syntax.operands().at(2);
    if (setting.writer() == SettingWriter::others)
        return syntax.usageError(
            console,
            QStringLiteral("%1 is kept for other programs; this one never changes it.").arg(setting.key()));
    const std::optional<QVariant> value = setting.permitted(text, modelIDs);
    if (!value)
        return syntax.usageError(console, QStringLiteral("%1 cannot be “%2”; permitted: %3.")
                                              .arg(setting.key(), text, setting.permittedText(modelIDs)));
    return assign(console, settings, setting, *value);
}

} // namespace

int runSettings(const QStringList& arguments, Console& console, AppSettings& settings,
                const QStringList& modelIDs)
{
    CommandSyntax syntax(QStringLiteral("settings"),
                         QStringLiteral("Shows and changes the stored settings."));
    describeSyntax(syntax);
    if (const std::optional<int> status = syntax.parse(arguments, console))
        return *status;
    const QStringList operands = syntax.operands();
    if (const std::optional<QString> problem = operandProblem(operands))
        return syntax.usageError(console, *problem);
    if (operands.first() == u"list")
        return list(console, settings);
    AnySetting* const setting = settings.find(operands.at(1));
    if (setting == nullptr)
        return syntax.usageError(console, QStringLiteral("there is no setting “%1”.").arg(operands.at(1)));
    if (operands.first() == u"get")
        return get(console, *setting);
    return set(syntax, console, settings, *setting, modelIDs);
}

} // namespace tulvane::cli
