// What is inserted arrives byte for byte in every kind of program, and nothing else changes.
#include "InsertionFixture.h"
#include "RandomText.h"

#include <support/Soak.h>

namespace tulvane::test {
namespace {

constexpr int longest = 5000;

class InsertionInto : public InsertionFixture, public testing::WithParamInterface<Target> {
protected:
    InsertionInto() { open(GetParam()); }

    [[nodiscard]] LineBreaks lineBreaks() const
    {
        return m_target->takesLineBreaks() ? LineBreaks::some : LineBreaks::none;
    }
};

TEST_P(InsertionInto, everyTextArrivesExactlyAndTheClipboardComesBack)
{
    std::mt19937 random(static_cast<unsigned>(GetParam()) + 1);
    const int count = soakCount(10, 100);
    for (int index = 0; index < count && !HasFailure(); ++index) {
        const QString text = randomText(random, randomLength(random, index, longest), lineBreaks());
        SCOPED_TRACE(QStringLiteral("text %1").arg(index).toStdString());
        expectArrives(text);
    }
}

TEST_P(InsertionInto, spacesAndLineBreaksAtEitherEndAreKept)
{
    QStringList texts{QStringLiteral(" "), QStringLiteral("  word    "), QStringLiteral("😀 ")};
    if (lineBreaks() == LineBreaks::some)
        texts.append({QStringLiteral("\n"), QStringLiteral("\n\n  line\n\n"), QStringLiteral("line\n  ")});
    for (const QString& text : texts) {
        SCOPED_TRACE(text.toStdString());
        expectArrives(text);
    }
    // The next one begins where the last one ended.
    EXPECT_EQ(insert(QStringLiteral("andre. ")), InsertionResult::pasted);
    expectHeld(texts.constLast() + QStringLiteral("andre. "));
    expectUsersContent();
}

INSTANTIATE_TEST_SUITE_P(Programs, InsertionInto, testing::ValuesIn(everyTarget), nameOfParameter);

} // namespace
} // namespace tulvane::test
