#pragma once

#include <app/cli/Console.h>

#include <QBuffer>
#include <QString>

#include <functional>

namespace tulvane::test {

/// What a command left behind.
struct CommandRun {
    int status = -1;
    QString out;
    QString err;

    [[nodiscard]] static CommandRun of(const std::function<int(cli::Console&)>& command)
    {
        CommandRun run;
        QBuffer in;
        QTextStream out(&run.out);
        QTextStream err(&run.err);
        cli::Console console{.in = in, .out = out, .err = err};
        run.status = command(console);
        return run;
    }
};

} // namespace tulvane::test
