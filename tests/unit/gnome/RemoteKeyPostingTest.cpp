// What goes out to GNOME's service for remote control, and when. What a real one makes of it, the desktop's
// suites see.
#include "ScriptedMutter.h"

#include <platform/linux/gnome/MutterRemoteDesktop.h>
#include <platform/linux/remote/RemoteKeyPosting.h>
#include <support/Await.h>

#include <QThread>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// As `ScriptedMutter::keys` has them.
QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

const QStringList controlV = words("29+ 47+ 47- 29-");

class MutterKeys : public testing::Test {
protected:
    RemoteKeyPosting& posting()
    {
        if (!m_posting) {
            hooks.isInFront = [this](const PasteTarget&) { return isInFront; };
            hooks.isOffered = [this](const PasteTarget&) {
                ++looks;
                return isOffered || looks == offeredAfter;
            };
            hooks.isRead = [this](const PasteTarget&) {
                keysAtLooking = mutter.keys;
                return isRead || ++readLooks == readAfter;
            };
            hooks.pasting = [this](const PasteTarget&) { keysAtPasting = mutter.keys; };
            m_posting = std::make_unique<RemoteKeyPosting>(
                std::make_shared<MutterRemoteDesktop>(mutter.bus()), hooks);
        }
        return *m_posting;
    }
    /// And until nothing more is on its way.
    [[nodiscard]] bool hasSessions(qsizetype count)
    {
        return waitUntil([&] { return mutter.sessions() == count; });
    }

    ScriptedMutter mutter;
    RemoteKeyPosting::Hooks hooks;
    bool isInFront = true;
    bool isOffered = true;
    int looks = 0;
    int offeredAfter = -1;
    bool isRead = true;
    int readLooks = 0;
    int readAfter = -1;
    QStringList keysAtLooking;
    QStringList keysAtPasting;

private:
    std::unique_ptr<RemoteKeyPosting> m_posting;
};

} // namespace

TEST_F(MutterKeys, AChordIsPressedInASessionOfItsOwn)
{
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(mutter.keys, controlV);
    EXPECT_EQ(mutter.opened, 1);
    EXPECT_TRUE(hasSessions(0));
    EXPECT_EQ(keysAtPasting, words("29+")) << "a read counts from the last key on";
}

TEST_F(MutterKeys, AnAnnouncedPasteTakesTheSessionThatWasOpenedForIt)
{
    posting().prepare();
    ASSERT_TRUE(hasSessions(1));
    EXPECT_EQ(mutter.keys, QStringList()) << "nothing is pressed ahead";
    posting().prepare();
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(mutter.opened, 1);
    EXPECT_EQ(mutter.keys, controlV);
    EXPECT_TRUE(hasSessions(0));
}

TEST_F(MutterKeys, APasteWaitsForTheSessionThatIsJustBeingOpened)
{
    posting().prepare();
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(mutter.opened, 1);
    EXPECT_EQ(mutter.keys, controlV);
    EXPECT_TRUE(hasSessions(0));
}

TEST_F(MutterKeys, ASessionThatIsNotUsedIsClosed)
{
    hooks.unusedLimit = std::chrono::milliseconds(200);
    posting().prepare();
    ASSERT_TRUE(hasSessions(1));
    EXPECT_TRUE(hasSessions(0));
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(mutter.opened, 2);
    EXPECT_EQ(mutter.keys, controlV);
}

TEST_F(MutterKeys, ASessionThatWasEndedMeanwhileIsReplaced)
{
    posting().prepare();
    ASSERT_TRUE(hasSessions(1));
    mutter.endSessions();
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(mutter.opened, 2);
    EXPECT_EQ(mutter.keys, controlV);
    EXPECT_TRUE(hasSessions(0));
}

TEST_F(MutterKeys, WhereThereIsNoneToBeHadNothingIsPressed)
{
    mutter.refuses = true;
    posting().prepare();
    EXPECT_FALSE(await(posting().paste({})));
    EXPECT_FALSE(await(posting().typeSpaces(2)));
    EXPECT_EQ(mutter.keys, QStringList());
    mutter.refuses = false;
    EXPECT_TRUE(await(posting().typeSpaces(2)));
    EXPECT_EQ(mutter.keys, words("57+ 57- 57+ 57-"));
}

TEST_F(MutterKeys, TheLastKeyWaitsUntilTheTextCanBeRead)
{
    isOffered = false;
    offeredAfter = 20;
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(looks, 20);
    EXPECT_EQ(mutter.keys, controlV);
}

TEST_F(MutterKeys, ButNotForEver)
{
    isOffered = false;
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(mutter.keys, controlV);
}

TEST_F(MutterKeys, ModifiersStayDownUntilTheTargetHasRead)
{
    isRead = false;
    readAfter = 20;
    EXPECT_TRUE(await(posting().paste({})));
    EXPECT_EQ(keysAtLooking, words("29+ 47+ 47-"));
    EXPECT_EQ(readLooks, 20);
    EXPECT_EQ(mutter.keys, controlV);
    readAfter = -1;
    EXPECT_TRUE(await(posting().paste({}))) << "though not for ever";
    EXPECT_EQ(mutter.keys, controlV + controlV);
}

TEST_F(MutterKeys, AUserWhoGoesElsewhereMeanwhileGetsNoKey)
{
    isOffered = false;
    const auto pasting = posting().paste({});
    ASSERT_TRUE(waitUntil([&] { return looks > 0; }));
    isInFront = false;
    isOffered = true;
    EXPECT_FALSE(await(pasting));
    EXPECT_EQ(mutter.keys, words("29+ 29-"));
    EXPECT_TRUE(hasSessions(0));
}

TEST_F(MutterKeys, AModifierThatIsRefusedKeepsTheLastKeyBack)
{
    mutter.failing = {QStringLiteral("42+")};
    EXPECT_FALSE(await(posting().paste({.chord = PasteChord::controlShiftV})));
    EXPECT_EQ(mutter.keys, words("29+ 29-")) << "and what went down goes up";
    EXPECT_TRUE(hasSessions(0));
}

TEST_F(MutterKeys, TwoAtOnceAreNotMixed)
{
    const auto first = posting().paste({});
    EXPECT_FALSE(await(posting().paste({})));
    EXPECT_TRUE(await(first));
    EXPECT_EQ(mutter.keys, controlV);
}

TEST_F(MutterKeys, AServiceThatGivesUsNoSessionIsNotOffered)
{
    for (const bool refuses : {false, true}) {
        mutter.refuses = refuses;
        bool isFound = refuses;
        // The service answers on this thread.
        const std::unique_ptr<QThread> caller(
            QThread::create([&] { isFound = MutterRemoteDesktop::isOffered(mutter.bus()); }));
        caller->start();
        ASSERT_TRUE(waitUntil([&] { return caller->isFinished(); }));
        EXPECT_EQ(isFound, !refuses);
    }
    EXPECT_EQ(mutter.keys, QStringList());
}

TEST_F(MutterKeys, ItGoesAtAnyTime)
{
    for (const int milliseconds : {0, 1, 5, 20, 60, 80}) {
        RemoteKeyPosting shortLived(std::make_shared<MutterRemoteDesktop>(mutter.bus()), {});
        shortLived.prepare();
        const auto pasting = shortLived.paste({});
        (void)waitUntil([&] { return pasting.isFinished(); }, std::chrono::milliseconds(milliseconds));
    }
}

} // namespace tulvane::test
