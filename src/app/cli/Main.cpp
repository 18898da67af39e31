#include <app/cli/BecomeProgram.h>
#include <app/cli/CommandProcess.h>
#include <app/cli/LaunchOptions.h>
#include <app/cli/LocalCommands.h>
#include <app/program/ProgramFolders.h>

namespace tulvane {

namespace {

/// Becomes the executable with the commands that need other processes.
int becomeCommands(const QStringList& arguments, cli::Console& console)
{
    return cli::becomeProgram(ProgramFolders::ofThisProgram().commandProgram(), arguments, console);
}

/// Becomes the program that runs on the desktop.
int startProgram(const QStringList& arguments, cli::Console& console)
{
    // Wrong words are found here, where the answer comes at once.
    if (const auto words = cli::LaunchOptions::parse(arguments, console); !words)
        return words.error();
    return cli::becomeProgram(ProgramFolders::ofThisProgram().desktopProgram(), arguments, console);
}

} // namespace

} // namespace tulvane

int main(int argc, char** argv)
{
    using namespace tulvane;
    cli::runCommandProcess(
        argc, argv, [] { return localCommands(becomeCommands); }, becomeCommands, startProgram);
}
