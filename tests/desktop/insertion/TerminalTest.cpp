// What a terminal would run as a command does not end a line there.
#include "InsertionFixture.h"

namespace tulvane::test {
namespace {

class Terminal : public InsertionFixture, public testing::WithParamInterface<Target> {};

TEST_P(Terminal, aLineBreakArrivesAsASpace)
{
    open(GetParam());
    EXPECT_EQ(insert(QStringLiteral("første linje\nandre\r\ntredje\n ")), InsertionResult::pasted);
    expectHeld(QStringLiteral("første linje andre tredje  "));
    expectUsersContent();
}

INSTANTIATE_TEST_SUITE_P(Programs, Terminal, testing::Values(Target::xterm, Target::vteTerminal),
                         nameOfParameter);

} // namespace
} // namespace tulvane::test
