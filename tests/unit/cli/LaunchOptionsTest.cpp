#include "CommandRun.h"

#include <app/cli/LaunchOptions.h>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

using test::CommandRun;

/// What the words mean; none where they are refused.
std::optional<LaunchOptions> parsed(const QStringList& words)
{
    std::optional<LaunchOptions> options;
    const CommandRun run = CommandRun::of([&](Console& console) {
        const auto result = LaunchOptions::parse(words, console);
        if (result)
            options = *result;
        return result ? 0 : result.error();
    });
    EXPECT_EQ(run.status == 0, options.has_value());
    return options;
}

TEST(LaunchOptions, WithoutWordsTheWindowComes)
{
    const auto options = parsed({});
    ASSERT_TRUE(options);
    EXPECT_FALSE(options->background);
    EXPECT_FALSE(options->page);
}

TEST(LaunchOptions, ASessionManagersIdIsTakenInEveryWayInWhichItIsWritten)
{
    const QString id = QStringLiteral("10aa8e0e6000169534862400000012340007_1695348624_123456");
    for (const QStringList& words :
         {QStringList{QStringLiteral("-session"), id}, QStringList{QStringLiteral("--session"), id},
          QStringList{QStringLiteral("-session=") + id}, QStringList{QStringLiteral("--session=") + id},
          QStringList{QStringLiteral("--background"), QStringLiteral("-session"), id}}) {
        const auto options = parsed(words);
        ASSERT_TRUE(options) << qPrintable(words.join(u' '));
        EXPECT_TRUE(options->background);
        EXPECT_FALSE(options->page);
    }
    EXPECT_FALSE(parsed({QStringLiteral("-session")}));
    EXPECT_FALSE(parsed({QStringLiteral("-sessions"), id}));
}

TEST(LaunchOptions, TheHelpIsForUsersAndLeavesTheSessionManagersWordOut)
{
    const CommandRun help = CommandRun::of(
        [](Console& console) { return LaunchOptions::parse({QStringLiteral("--help")}, console).error(); });
    EXPECT_EQ(help.status, ExitStatus::done);
    EXPECT_TRUE(help.out.contains(u"--background"));
    EXPECT_FALSE(help.out.contains(u"session"));
}

} // namespace
} // namespace tulvane::cli
