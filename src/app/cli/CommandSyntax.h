#pragma once

#include <app/cli/Console.h>

#include <QCommandLineParser>

#include <limits>
#include <optional>

namespace tulvane::cli {

/// The words that one command takes. Wraps the library's parser so that every command answers `--help`,
/// `--version` and a wrong word alike: help and version on `out` with status 0, a wrong word in one line on
/// `err` with status 2.
class CommandSyntax final {
public:
    /// `name` as typed after "tulvane" ("transcribe"), empty for the program's own start; `summary` in one
    /// sentence.
    CommandSyntax(const QString& name, const QString& summary);

    /// An option without a value ("json").
    void addFlag(const QString& name, const QString& meaning);
    /// An option with a value ("language", "CODE").
    void addOption(const QString& name, const QString& valueName, const QString& meaning);
    /// Likewise one that only other programs use: the help does not show it.
    void addHiddenOption(const QString& name, const QString& valueName);
    /// A word of the command's own, in order. `syntax` is how the usage line shows it ("FILE", "[VALUE]").
    void addArgument(const QString& name, const QString& meaning, const QString& syntax = QString());
    /// How many words must and may stand; the default is none.
    void setOperandCount(qsizetype atLeast, qsizetype atMost = std::numeric_limits<qsizetype>::max());
    /// A paragraph below the options.
    void setRemark(const QString& remark) { m_remark = remark; }

    /// Reads the arguments (without "tulvane" and the command's name). A status means: end with it, all is
    /// said. None means: go on.
    [[nodiscard]] std::optional<int> parse(const QStringList& arguments, Console& console);

    [[nodiscard]] bool isSet(const QString& option) const { return m_parser.isSet(option); }
    [[nodiscard]] QString value(const QString& option) const { return m_parser.value(option); }
    [[nodiscard]] QStringList operands() const { return m_parser.positionalArguments(); }

    /// Says in one line what is wrong with the words, and gives the status to end with.
    [[nodiscard]] int usageError(Console& console, const QString& problem) const;

private:
    [[nodiscard]] QString called() const;
    [[nodiscard]] QString helpText() const;

    QCommandLineParser m_parser;
    QString m_name;
    QString m_summary;
    QString m_remark;
    QStringList m_operandSyntax;
    qsizetype m_atLeast = 0;
    qsizetype m_atMost = 0;
};

} // namespace tulvane::cli
