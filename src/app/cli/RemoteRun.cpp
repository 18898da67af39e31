#include <app/cli/RemoteRun.h>
#include <base/async/WaitFor.h>

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>

namespace tulvane::cli {

namespace {

const QString statusKey = QStringLiteral("status");
const QString outKey = QStringLiteral("out");
const QString errKey = QStringLiteral("err");

} // namespace

std::optional<int> runThere(const QStringList& arguments, RemoteRequest request, RemoteControl& remote,
                            Console& console)
{
    const QJsonDocument text(QJsonArray::fromStringList(arguments));
    const auto answer = waitFor(remote.ask(request, QString::fromUtf8(text.toJson(QJsonDocument::Compact))));
    if (!answer || !answer->contains(statusKey))
        return std::nullopt;
    console.out << (*answer)[outKey].toString();
    console.err << (*answer)[errKey].toString();
    console.out.flush();
    console.err.flush();
    return (*answer)[statusKey].toInt();
}

QJsonObject answerOf(const QString& text,
                     const std::function<int(const QStringList& arguments, Console& console)>& command)
{
    QStringList arguments;
    for (const auto& argument : QJsonDocument::fromJson(text.toUtf8()).array())
        arguments.append(argument.toString());
    QBuffer in;
    QString out;
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    Console console{.in = in, .out = outStream, .err = errStream};
    const int status = command(arguments, console);
    outStream.flush();
    errStream.flush();
    return {{statusKey, status}, {outKey, out}, {errKey, err}};
}

} // namespace tulvane::cli
