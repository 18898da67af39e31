#include <app/cli/CommandSyntax.h>

#include <QCoreApplication>

namespace tulvane::cli {

CommandSyntax::CommandSyntax(const QString& name, const QString& summary) : m_name(name), m_summary(summary)
{
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Say how to use this.")});
    m_parser.addOption({QStringLiteral("version"), QStringLiteral("Say which version this is.")});
    m_parser.addOption({QStringLiteral("verbose"), QStringLiteral("Write the log to standard error.")});
}

void CommandSyntax::addFlag(const QString& name, const QString& meaning)
{
    m_parser.addOption({name, meaning});
}

void CommandSyntax::addOption(const QString& name, const QString& valueName, const QString& meaning)
{
    m_parser.addOption({name, meaning, valueName});
}

void CommandSyntax::addHiddenOption(const QString& name, const QString& valueName)
{
    QCommandLineOption option(name, QString(), valueName);
    option.setFlags(QCommandLineOption::HiddenFromHelp);
    m_parser.addOption(option);
}

void CommandSyntax::addArgument(const QString& name, const QString& meaning, const QString& syntax)
{
    m_parser.addPositionalArgument(name, meaning);
    m_operandSyntax.append(syntax.isEmpty() ? name : syntax);
}

void CommandSyntax::setOperandCount(qsizetype atLeast, qsizetype atMost)
{
    m_atLeast = atLeast;
    m_atMost = atMost;
}

std::optional<int> CommandSyntax::parse(const QStringList& arguments, Console& console)
{
    // The parser takes a whole argument list; the program's name in front is not read.
    const bool understood = m_parser.parse(QStringList{m_name} + arguments);
    if (m_parser.isSet(QStringLiteral("help"))) {
        console.out << helpText();
        return ExitStatus::done;
    }
    if (m_parser.isSet(QStringLiteral("version"))) {
        console.out << "tulvane " << QCoreApplication::applicationVersion() << '\n';
        return ExitStatus::done;
    }
    if (!understood)
        return usageError(console, m_parser.errorText());
    const qsizetype count = operands().size();
    if (count < m_atLeast)
        return usageError(console, m_operandSyntax.value(count) + QStringLiteral(" is missing."));
    if (count > m_atMost)
        return usageError(console, QStringLiteral("“%1” is one word too many.").arg(operands().at(m_atMost)));
    return std::nullopt;
}

QString CommandSyntax::called() const
{
    return m_name.isEmpty() ? QStringLiteral("tulvane") : QStringLiteral("tulvane ") + m_name;
}

int CommandSyntax::usageError(Console& console, const QString& problem) const
{
    const QString command = called();
    console.err << command << ": " << problem << " (" << command << " --help)" << Qt::endl;
    return ExitStatus::wrongUsage;
}

QString CommandSyntax::helpText() const
{
    QStringList usage{QStringLiteral("Usage: ") + called()};
    usage += m_operandSyntax;
    usage.append(QStringLiteral("[options]"));
    // The library's first line names the executable's whole path; ours names what is typed.
    const QString library = m_parser.helpText();
    QString text = usage.join(u' ') + u'\n' + m_summary + u'\n' + library.mid(library.indexOf(u'\n') + 1);
    if (!m_remark.isEmpty())
        text += u'\n' + m_remark + u'\n';
    return text;
}

} // namespace tulvane::cli
