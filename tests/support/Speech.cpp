#include <support/Speech.h>

#include <QProcess>

#include <cstring>

namespace tulvane::test {

namespace {

QByteArray outputOf(const QString& program, const QStringList& arguments, const QByteArray& input)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60'000) || process.exitCode() != 0)
        qFatal("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

} // namespace

std::vector<float> speakSentence(const QString& text, const QString& voice)
{
    const QByteArray wave =
        outputOf(QStringLiteral("espeak-ng"), {QStringLiteral("-v"), voice, QStringLiteral("--stdout")},
                 text.toUtf8());
    // What espeak-ng writes to a pipe says nothing true of its own length.
    const QByteArray raw =
        outputOf(QStringLiteral("sox"),
                 QStringLiteral("-V1 --ignore-length -t wav - -c 1 -r 16000 -e floating-point -b 32 -t raw -")
                     .split(u' '),
                 wave);
    std::vector<float> samples(static_cast<std::size_t>(raw.size()) / sizeof(float));
    std::memcpy(samples.data(), raw.constData(), samples.size() * sizeof(float));
    return samples;
}

} // namespace tulvane::test
