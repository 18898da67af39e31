#include <app/cli/CommandTable.h>

#include <array>

namespace tulvane::cli {

namespace {

struct Entry {
    const char* name;
    const char* summary;
};

constexpr std::array entries{
    Entry{"transcribe", "Turns a sound file into clean text."},
    Entry{"dictate", "Turns what you say into clean text."},
    Entry{"clean", "Cleans a transcript from standard input."},
    Entry{"models", "Shows, fetches and removes speech models."},
    Entry{"devices", "Lists what speech models can run on."},
    Entry{"settings", "Lists, reads or changes the stored settings."},
    Entry{"start", "Begins a dictation in the running program."},
    Entry{"stop", "Ends it and inserts what was said."},
    Entry{"toggle", "Whichever of the two fits: for a desktop's own key bindings."},
    Entry{"cancel", "Abandons it."},
    Entry{"quit", "Ends the running program."},
    Entry{"status", "Says what the running program is doing."},
    Entry{"doctor", "Says what works here, and what to do about the rest."},
    Entry{"stats", "Shows how much has been dictated."},
    Entry{"forget", "Removes everything that Tulvane has stored."},
};

} // namespace

std::vector<Command> commandTable(const std::map<QString, Run>& runs, const Run& others)
{
    std::vector<Command> commands;
    for (const Entry& entry : entries) {
        const QString name = QString::fromLatin1(entry.name);
        const auto found = runs.find(name);
        const Run other = [name, others](const QStringList& arguments, Console& console) {
            return others(QStringList{name} + arguments, console);
        };
        commands.push_back(
            {name, QString::fromLatin1(entry.summary), found == runs.end() ? other : found->second});
    }
    return commands;
}

} // namespace tulvane::cli
