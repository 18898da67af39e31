#include <app/cli/CommandSyntax.h>
#include <app/cli/ForgetCommand.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tulvane::cli {

namespace {

QStringList existing(const QStringList& traces)
{
    QStringList found;
    for (const QString& trace : traces) {
        const QFileInfo info(trace);
        if (!info.fileName().contains(u'*')) {
            if (info.exists() || info.isSymLink())
                found.append(trace);
            continue;
        }
        const QDir folder = info.dir();
        for (const QString& name :
             folder.entryList({info.fileName()}, QDir::Files | QDir::Hidden | QDir::System, QDir::Name))
            found.append(folder.filePath(name));
    }
    return found;
}

bool isConfirmed(Console& console)
{
    console.out << "Remove all of this? It cannot be undone. [y/N] " << Qt::flush;
    const QString answer = QString::fromUtf8(console.in.readLine()).trimmed();
    return answer.compare(u"y", Qt::CaseInsensitive) == 0 || answer.compare(u"yes", Qt::CaseInsensitive) == 0;
}

bool removeTrace(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink())
        return QDir(path).removeRecursively();
    return QFile::remove(path);
}

int removeAll(const QStringList& paths, Console& console)
{
    bool all = true;
    for (const QString& path : paths) {
        if (removeTrace(path)) {
            console.out << "removed " << path << '\n';
            continue;
        }
        console.err << "tulvane: " << path << " could not be removed." << Qt::endl;
        all = false;
    }
    console.out.flush();
    return all ? ExitStatus::done : ExitStatus::failed;
}

} // namespace

int runForget(const QStringList& arguments, const ForgetContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("forget"),
                         QStringLiteral("Removes settings, counters, speech models and the start at login."));
    syntax.addFlag(QStringLiteral("all"), QStringLiteral("Remove everything that Tulvane has stored."));
    syntax.addFlag(QStringLiteral("yes"), QStringLiteral("Do not ask."));
    if (const auto status = syntax.parse(arguments, console))
        return *status;
    if (!syntax.isSet(QStringLiteral("all")))
        return syntax.usageError(console, QStringLiteral("--all is missing."));
    if (context.isProgramRunning())
        return fail(console,
                    QStringLiteral("Tulvane is running, and would write its files again. Quit it first."));
    const QStringList found = existing(context.traces);
    if (found.isEmpty()) {
        console.out << "There is nothing to remove." << Qt::endl;
        return ExitStatus::done;
    }
    if (!syntax.isSet(QStringLiteral("yes"))) {
        console.out << found.join(u'\n') << '\n';
        if (!isConfirmed(console))
            return fail(console, QStringLiteral("Nothing was removed."));
    }
    return removeAll(found, console);
}

} // namespace tulvane::cli
