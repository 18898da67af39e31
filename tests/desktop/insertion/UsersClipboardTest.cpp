// What the user copied before a dictation is as good afterwards, whoever owns it and however large it is.
#include "InsertionFixture.h"

namespace tulvane::test {
namespace {

const auto said = QStringLiteral("Takk – det går «fint» 😀 ");
const auto own = QStringLiteral("brukerens «egen» tekst – æøå 😀");

class CopiedInFront : public InsertionFixture, public testing::WithParamInterface<Target> {
protected:
    CopiedInFront() { open(GetParam()); }

    void press(DeviceKey key)
    {
        m_fingers.press(DeviceKey::leftControl);
        m_fingers.tap(key);
        m_fingers.release(DeviceKey::leftControl);
    }
};

TEST_P(CopiedInFront, canStillBePastedThereAfterwards)
{
    m_target->clear();
    EXPECT_EQ(insert(own), InsertionResult::pasted);
    expectHeld(own);
    press(DeviceKey::a);
    press(DeviceKey::c);
    ASSERT_TRUE(waitUntil([this] { return clipboardText() == own.toUtf8(); }));
    const Content copied = read(QStringLiteral("CLIPBOARD"));
    m_target->clear();

    EXPECT_EQ(insert(said), InsertionResult::pasted);
    expectHeld(said);
    EXPECT_TRUE(read(QStringLiteral("CLIPBOARD")) == copied);
    press(DeviceKey::v);
    expectHeld(said + own);
}

INSTANTIATE_TEST_SUITE_P(Programs, CopiedInFront,
                         testing::Values(Target::gtkEntry, Target::gtkTextView, Target::qtLineEdit,
                                         Target::qtTextEdit, Target::chromium),
                         nameOfParameter);

class UsersClipboard : public InsertionFixture {
protected:
    UsersClipboard() { open(Target::gtkTextView); }
};

TEST_F(UsersClipboard, aPictureThatComesInPiecesComesBack)
{
    QByteArray picture("\x89PNG\r\n\x1a\n");
    for (int i = 0; picture.size() < 3'000'000; ++i)
        picture.append(QByteArray::number(i)).append('\0');
    m_clipboardOwner.offer({{QStringLiteral("image/png"), ScriptedOwner::Target::inPieces(picture, 40)},
                            {QStringLiteral("text/html"), ScriptedOwner::Target("<img>")}});
    m_clipboardOwner.own();
    EXPECT_EQ(insert(said), InsertionResult::pasted);
    expectHeld(said);
    const Content after = read(QStringLiteral("CLIPBOARD"));
    EXPECT_TRUE(after.value(QStringLiteral("image/png")) == picture);
    EXPECT_EQ(after.value(QStringLiteral("text/html")), "<img>");
    EXPECT_EQ(after.size(), 2);
}

TEST_F(UsersClipboard, anotherProgramReadsEveryTypeOfItAsBefore)
{
    EXPECT_EQ(insert(said), InsertionResult::pasted);
    for (auto each = m_copied.cbegin(); each != m_copied.cend(); ++each) {
        const QByteArray got = readElsewhere(each.key());
        EXPECT_TRUE(got == each.value()) << each.key().toStdString();
    }
}

} // namespace
} // namespace tulvane::test
