// Which window is in front, when KWin or the bus ends and returns.
#include "ScriptedKWin.h"

#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/OwnConnection.h>
#include <platform/linux/kde/KWinFront.h>
#include <support/Await.h>
#include <support/ReturningBus.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class KWinFrontReturnTest : public testing::Test {
protected:
    /// From the first script on, or from the next one.
    [[nodiscard]] bool isTold(const QString& resourceClass, quint32 process)
    {
        if (!waitUntil([&] { return kwin.hasScript(); }))
            return false;
        kwin.activate(resourceClass, static_cast<int>(process));
        return waitUntil([&] {
            return front.current().resourceClass == resourceClass && front.current().process == process;
        });
    }
    [[nodiscard]] bool isForgotten()
    {
        return waitUntil([&] { return front.current().id.isEmpty(); });
    }

    ReturningBus bus;
    ScriptedKWin kwin;
    KWinFront front{std::make_shared<LastingBus>(bus.address())};
};

TEST_F(KWinFrontReturnTest, AKWinThatStartsAnewGetsTheScriptAgain)
{
    kwin.appear(bus.address());
    ASSERT_TRUE(isTold(QStringLiteral("editor"), 7));
    kwin.disappear();
    EXPECT_TRUE(isForgotten());
    kwin.appear(bus.address());
    EXPECT_TRUE(isTold(QStringLiteral("terminal"), 8));
}

TEST_F(KWinFrontReturnTest, KWinMayHaveItsNameBeforeItTakesScripts)
{
    kwin.appear(bus.address(), false);
    EXPECT_FALSE(waitUntil([&] { return kwin.hasScript(); }, std::chrono::milliseconds(150)));
    kwin.takeScripts();
    EXPECT_TRUE(isTold(QStringLiteral("editor"), 7));
}

TEST_F(KWinFrontReturnTest, AScriptOfOursThatKWinHasAlreadyIsReplaced)
{
    kwin.keepsAScript = true;
    kwin.appear(bus.address());
    EXPECT_TRUE(isTold(QStringLiteral("editor"), 7));
    EXPECT_EQ(kwin.unloads, 1);
}

TEST_F(KWinFrontReturnTest, ABusThatReturnsBringsTheScriptBack)
{
    kwin.appear(bus.address());
    ASSERT_TRUE(isTold(QStringLiteral("editor"), 7));
    bus.kill();
    EXPECT_TRUE(isForgotten());
    kwin.disappear();
    bus.start();
    kwin.appear(bus.address());
    EXPECT_TRUE(isTold(QStringLiteral("terminal"), 8));
}

TEST_F(KWinFrontReturnTest, OnlyKWinIsBelieved)
{
    kwin.appear(bus.address());
    ASSERT_TRUE(isTold(QStringLiteral("editor"), 7));
    const OwnConnection another(bus.address());
    kwin.callFrom(another.bus(), QStringLiteral("liar"), 9);
    EXPECT_FALSE(waitUntil([&] { return front.current().process == 9; }, std::chrono::milliseconds(150)));
    EXPECT_TRUE(isTold(QStringLiteral("terminal"), 8));
}

} // namespace

} // namespace tulvane::test
