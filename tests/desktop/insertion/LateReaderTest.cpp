// Programs that take their time to read the clipboard, and others that write to it meanwhile.
#include "InsertionFixture.h"

#include <support/ScratchFolder.h>

#include <QElapsedTimer>

namespace tulvane::test {
namespace {

using namespace std::chrono_literals;

const auto said = QStringLiteral("Blåbærsyltetøy\n«på brød» – 5 € 😀  ");
const auto body = QStringLiteral("Blåbærsyltetøy\n«på brød» – 5 € 😀");

class LateReader : public InsertionFixture {
protected:
    LateReader() { open(Target::gtkTextView); }

    /// Another program copies a text; returns when it has the clipboard.
    void copyElsewhere(const QByteArray& text)
    {
        const QString file = m_scratch.write(QStringLiteral("copied%1").arg(++m_elsewhere), text);
        // It stays in front of the shell: the desktop ends it.
        m_desktop.start(QStringLiteral("xclip"), {QStringLiteral("-quiet"), QStringLiteral("-selection"),
                                                  QStringLiteral("clipboard"), file});
    }
    [[nodiscard]] bool isChanged() const
    {
        return m_target->requests()->count(QStringLiteral("changed")) > 0;
    }

    ScratchFolder m_scratch;
    int m_elsewhere = 0;
};

TEST_F(LateReader, isWaitedForAndOnlyThenTheClipboardComesBack)
{
    for (const auto after : {0ms, 100ms, 500ms, 1000ms, 1900ms}) {
        SCOPED_TRACE(after.count());
        m_target->clear();
        copySomething();
        readLate(after);
        QElapsedTimer clock;
        clock.start();
        const auto task = start(said);
        ASSERT_TRUE(waitUntil([&] { return isAsked(); }));
        while (!isChanged() && clock.elapsed() < 5000)
            ASSERT_EQ(clipboardText(), body.toUtf8());
        EXPECT_GE(clock.elapsed(), after.count());
        EXPECT_EQ(clipboardText(), body.toUtf8());
        EXPECT_EQ(finished(task), InsertionResult::pasted);
        expectHeld(said);
        expectUsersContent();
    }
}

TEST_F(LateReader, whatIsNeverReadStaysOnTheClipboard)
{
    readLate(never);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(insert(said), InsertionResult::copiedToClipboard);
    EXPECT_GE(clock.elapsed(), 2000);
    EXPECT_LT(clock.elapsed(), 3000);
    expectHeld({});
    EXPECT_EQ(clipboardText(), said.toUtf8());
    // The user pastes it then, and gets all of it.
    readLate(0ms);
    m_fingers.press(DeviceKey::leftControl);
    m_fingers.tap(DeviceKey::v);
    m_fingers.release(DeviceKey::leftControl);
    expectHeld(said);
    EXPECT_EQ(clipboardText(), said.toUtf8());
}

TEST_F(LateReader, whatAnotherProgramCopiesMeanwhileComesBackAndTheTextArrives)
{
    readLate(1000ms);
    const auto task = start(said);
    ASSERT_TRUE(waitUntil([&] { return isAsked(); }));
    copyElsewhere("newer");
    EXPECT_EQ(finished(task), InsertionResult::pasted);
    expectHeld(said);
    EXPECT_TRUE(waitUntil([&] { return clipboardText() == "newer"; }, 2s));
}

TEST_F(LateReader, whatAnotherProgramCopiesAfterTheReadStays)
{
    readLate(100ms);
    const auto task = start(said);
    ASSERT_TRUE(waitUntil([&] { return isChanged(); }));
    copyElsewhere("newer");
    EXPECT_EQ(finished(task), InsertionResult::pasted);
    expectHeld(said);
    EXPECT_TRUE(waitUntil([&] { return clipboardText() == "newer"; }, 2s));
}

TEST_F(LateReader, whatAnotherProgramCopiedBeforeComesBack)
{
    copyElsewhere("newer");
    ASSERT_TRUE(waitUntil([&] { return clipboardText() == "newer"; }));
    EXPECT_EQ(insert(said), InsertionResult::pasted);
    expectHeld(said);
    EXPECT_EQ(clipboardText(), "newer");
}

TEST_F(LateReader, anotherReaderIsNotTakenForTheProgramInFront)
{
    readLate(1000ms);
    const auto task = start(said);
    ASSERT_TRUE(waitUntil([&] { return isAsked(); }));
    EXPECT_EQ(readElsewhere(QStringLiteral("UTF8_STRING")), body.toUtf8());
    EXPECT_FALSE(isChanged());
    EXPECT_EQ(finished(task), InsertionResult::pasted);
    expectHeld(said);
    expectUsersContent();
}

} // namespace
} // namespace tulvane::test
