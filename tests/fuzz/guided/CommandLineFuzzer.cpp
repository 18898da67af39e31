#include "Fuzzer.h"

#include <app/cli/LaunchOptions.h>
#include <app/cli/RemoteRun.h>
#include <app/cli/SettingsCommand.h>
#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QTextStream>

namespace {

QCoreApplication& application()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char* words[] = {name, nullptr};
    static QCoreApplication app(count, words);
    return app;
}

} // namespace

// Words as a shell passes them, one a line: to the program's start and to `settings`; and the same as another
// process sends them to the running program.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    application();
    const QString text = QString::fromUtf8(test::bytesOf(data, size));
    const QStringList words = text.split(u'\n');
    QBuffer in;
    in.open(QIODevice::ReadOnly);
    QString said;
    QTextStream out(&said);
    cli::Console console{.in = in, .out = out, .err = out};
    const auto options = cli::LaunchOptions::parse(words, console);
    test::promise(options.has_value() || !said.isEmpty(), "who is refused is told why");

    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    const QStringList models{QStringLiteral("one"), QStringLiteral("two")};
    static_cast<void>(cli::runSettings(words, console, settings, models));
    static_cast<void>(cli::answerOf(text, [&](const QStringList& arguments, cli::Console& answer) {
        return cli::runSettings(arguments, answer, settings, models);
    }));
    return 0;
}
