#include <app/cli/CommandProcess.h>
#include <app/cli/ProgramCommands.h>

namespace {

/// `tulvane` becomes this executable for a command that it knows, and for nothing else.
int refuse(const QStringList&, tulvane::cli::Console& console)
{
    return tulvane::cli::fail(console, QStringLiteral("this is a part of tulvane: call that instead."));
}

} // namespace

int main(int argc, char** argv)
{
    tulvane::cli::runCommandProcess(argc, argv, tulvane::programCommands, refuse, refuse);
}
