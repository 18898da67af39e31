#include <app/cli/RecognitionOutput.h>
#include <app/cli/RecognitionArguments.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace tulvane::cli {

void printRecognised(const Recognised& recognised, const RecognitionArguments& words, Console& console)
{
    if (words.json) {
        const QJsonObject object{{QStringLiteral("text"), recognised.text},
                                 {QStringLiteral("raw"), recognised.raw},
                                 {QStringLiteral("language"), recognised.language},
                                 {QStringLiteral("audioSeconds"), recognised.audioSeconds},
                                 {QStringLiteral("loadSeconds"), recognised.loadSeconds},
                                 {QStringLiteral("transcribeSeconds"), recognised.transcribeSeconds}};
        console.out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) << Qt::endl;
    } else if (words.raw) {
        console.out << recognised.raw << Qt::endl;
    } else if (!recognised.text.isEmpty()) {
        console.out << recognised.text << Qt::endl;
    }
    if (recognised.text.isEmpty())
        console.err << "Nothing recognised" << Qt::endl;
}

} // namespace tulvane::cli
