#include <app/cli/CleanCommand.h>
#include <app/cli/CommandSyntax.h>
#include <speech/CleanTranscript.h>

#include <optional>

namespace tulvane::cli {

namespace {

/// Everything up to the end of the input; none when it cannot be read (a folder, say).
std::optional<QByteArray> readAll(QIODevice& in)
{
    QByteArray content;
    QByteArray piece(64 * 1024, Qt::Uninitialized);
    for (;;) {
        const qint64 count = in.read(piece.data(), piece.size());
        if (count < 0)
            return content.isEmpty() && !(in.isOpen() && in.atEnd()) ? std::nullopt : std::optional(content);
        if (count == 0)
            return content;
        content.append(piece.constData(), count);
    }
}

} // namespace

int runClean(const QStringList& arguments, Console& console)
{
    CommandSyntax syntax(QStringLiteral("clean"),
                         QStringLiteral("Cleans a transcript from standard input, as it would be inserted."));
    syntax.addFlag(QStringLiteral("no-capitalize"), QStringLiteral("Leave the first letter as it is."));
    syntax.addFlag(QStringLiteral("no-trailing-space"), QStringLiteral("Put no space after the text."));
    if (const auto status = syntax.parse(arguments, console))
        return *status;

    const std::optional<QByteArray> raw = readAll(console.in);
    if (!raw)
        return fail(console,
                    QStringLiteral("Could not read standard input: %1").arg(console.in.errorString()));
    console.out << cleanTranscript(
        QString::fromUtf8(*raw), {.autoCapitalize = !syntax.isSet(QStringLiteral("no-capitalize")),
                                  .appendTrailingSpace = !syntax.isSet(QStringLiteral("no-trailing-space"))});
    console.out.flush();
    return ExitStatus::done;
}

} // namespace tulvane::cli
