#include <app/cli/CommandSyntax.h>
#include <app/cli/LaunchOptions.h>

namespace tulvane::cli {

Result<LaunchOptions, int> LaunchOptions::parse(const QStringList& arguments, Console& console)
{
    CommandSyntax syntax(QString(), QStringLiteral("Starts the program; where it runs already, shows it."));
    syntax.addFlag(QStringLiteral("background"),
                   QStringLiteral("Without a window, to be used by its hotkey."));
    syntax.addOption(
        QStringLiteral("page"), QStringLiteral("PAGE"),
        QStringLiteral("Opens on this page: home, models, history, statistics, settings, about."));
    // What session managers put behind the name of a program that they bring back.
    syntax.addHiddenOption(QStringLiteral("session"), QStringLiteral("ID"));
    if (const auto status = syntax.parse(arguments, console))
        return failure(*status);
    LaunchOptions options;
    options.background =
        syntax.isSet(QStringLiteral("background")) || syntax.isSet(QStringLiteral("session"));
    if (syntax.isSet(QStringLiteral("page"))) {
        const QString name = syntax.value(QStringLiteral("page"));
        options.page = fromRawValue<SettingsTab>(name);
        if (!options.page)
            return failure(syntax.usageError(console, QStringLiteral("There is no page “%1”.").arg(name)));
    }
    return options;
}

} // namespace tulvane::cli
