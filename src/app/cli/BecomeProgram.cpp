#include <app/cli/BecomeProgram.h>

#include <QFile>

#include <unistd.h>

#include <cerrno>
#include <vector>

namespace tulvane::cli {

int becomeProgram(const QString& file, const QStringList& arguments, Console& console)
{
    console.out.flush();
    const QByteArray path = QFile::encodeName(file);
    std::vector<QByteArray> owned{path};
    owned.reserve(static_cast<std::size_t>(arguments.size()) + 1);
    for (const QString& argument : arguments)
        owned.push_back(argument.toLocal8Bit());
    std::vector<char*> words;
    words.reserve(owned.size() + 1);
    for (QByteArray& word : owned)
        words.push_back(word.data());
    words.push_back(nullptr);
    execv(path.constData(), words.data());
    return fail(console,
                QStringLiteral("The program %1 cannot be started: %2").arg(file, qt_error_string(errno)));
}

} // namespace tulvane::cli
