#include <platform/linux/process/ProgramNames.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

bool isInterpreter(const QString& name)
{
    constexpr std::array names{"python", "perl", "ruby", "node", "gjs", "java"};
    return std::ranges::any_of(names,
                               [&](const char* one) { return name.startsWith(QLatin1StringView(one)); });
}

} // namespace

QStringList programNames(quint32 process)
{
    if (process == 0)
        return {};
    const QString folder = QStringLiteral("/proc/%1/").arg(process);
    QStringList names;
    const auto add = [&](const QString& path) {
        QString name = QFileInfo(path).fileName();
        // An update has replaced the file.
        if (name.endsWith(QLatin1StringView(" (deleted)")))
            name.chop(static_cast<int>(sizeof " (deleted)") - 1);
        if (!name.isEmpty() && !names.contains(name))
            names.append(name);
    };
    add(QFile::symLinkTarget(folder + QStringLiteral("exe")));
    QFile file(folder + QStringLiteral("cmdline"));
    if (file.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> words = file.readAll().split('\0');
        add(QString::fromLocal8Bit(words.value(0)));
        if (!names.isEmpty() && isInterpreter(names.constFirst()) && !words.value(1).startsWith('-'))
            add(QString::fromLocal8Bit(words.value(1)));
    }
    return names;
}

} // namespace tulvane
