#include <app/cli/RecognitionArguments.h>
#include <app/cli/RecognitionOutput.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace tulvane::cli {

double secondsOf(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

void printRecognised(const Recognised& recognised, const RecognitionArguments& arguments, Console& console)
{
    if (arguments.json) {
        const QJsonObject object{{QStringLiteral("text"), recognised.text},
                                 {QStringLiteral("raw"), recognised.raw},
                                 {QStringLiteral("language"), recognised.language},
                                 {QStringLiteral("audioSeconds"), recognised.audioSeconds},
                                 {QStringLiteral("loadSeconds"), recognised.loadSeconds},
                                 {QStringLiteral("transcribeSeconds"), recognised.transcribeSeconds},
                                 {QStringLiteral("device"),
                                  recognised.device.isEmpty() ? QStringLiteral("cpu") : recognised.device}};
        console.out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) << Qt::endl;
    } else if (arguments.raw) {
        console.out << recognised.raw << Qt::endl;
    } else if (!recognised.text.isEmpty()) {
        console.out << recognised.text << Qt::endl;
    }
    if (recognised.text.isEmpty())
        console.err << "Nothing recognised" << Qt::endl;
}

} // namespace tulvane::cli
