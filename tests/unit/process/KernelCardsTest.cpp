#include <platform/linux/process/KernelCards.h>
#include <support/ScratchFolder.h>

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace tulvane::test {
namespace {

class KernelCardsTest : public ::testing::Test {
protected:
    void write(const QString& name, const QByteArray& content = {}) const
    {
        ASSERT_TRUE(QDir(folder.path()).mkpath(QFileInfo(name).path()));
        folder.write(name, content);
    }
    void addNode(const QString& name, const QByteArray& vendor)
    {
        write(QStringLiteral("dev/dri/") + name);
        write(QStringLiteral("sys/class/drm/%1/device/vendor").arg(name), vendor);
    }
    [[nodiscard]] QList<GraphicsCard> cards() const { return KernelCards(folder.path()).cards(); }

    ScratchFolder folder;
};

} // namespace

TEST_F(KernelCardsTest, AMachineWithoutNodesHasNoCards)
{
    EXPECT_EQ(cards(), QList<GraphicsCard>());
}

TEST_F(KernelCardsTest, EachRenderNodeIsACardOfItsVendor)
{
    addNode(QStringLiteral("renderD128"), "0x8086\n");
    addNode(QStringLiteral("renderD129"), "0x1002\n");
    addNode(QStringLiteral("renderD130"), "0x10de\n");
    EXPECT_EQ(cards(),
              QList<GraphicsCard>({{QStringLiteral("Intel"), QStringLiteral("/dev/dri/renderD128")},
                                   {QStringLiteral("AMD"), QStringLiteral("/dev/dri/renderD129")},
                                   {QStringLiteral("NVIDIA"), QStringLiteral("/dev/dri/renderD130")}}));
}

TEST_F(KernelCardsTest, AnotherVendorIsItsNumberAndAMissingOneIsEmpty)
{
    addNode(QStringLiteral("renderD128"), "0x1af4\n");
    write(QStringLiteral("dev/dri/renderD129"));
    EXPECT_EQ(cards(), QList<GraphicsCard>({{QStringLiteral("0x1af4"), QStringLiteral("/dev/dri/renderD128")},
                                            {QString(), QStringLiteral("/dev/dri/renderD129")}}));
}

TEST_F(KernelCardsTest, ANodeForScreensIsNoCard)
{
    addNode(QStringLiteral("card0"), "0x8086\n");
    EXPECT_EQ(cards(), QList<GraphicsCard>());
}

TEST_F(KernelCardsTest, NvidiasOwnNodeCountsWhereItsDriverMakesNoRenderNode)
{
    write(QStringLiteral("dev/nvidia0"));
    addNode(QStringLiteral("renderD128"), "0x8086\n");
    EXPECT_EQ(cards(), QList<GraphicsCard>({{QStringLiteral("Intel"), QStringLiteral("/dev/dri/renderD128")},
                                            {QStringLiteral("NVIDIA"), QStringLiteral("/dev/nvidia0")}}));
    addNode(QStringLiteral("renderD129"), "0x10de\n");
    EXPECT_EQ(cards().size(), 2) << "the same card twice";
}

TEST_F(KernelCardsTest, ANodeThatTheUserMayNotOpenIsSaidToBe)
{
    addNode(QStringLiteral("renderD128"), "0x1002\n");
    ASSERT_TRUE(cards().constFirst().isAccessible);
    ASSERT_EQ(
        chmod(QFile::encodeName(folder.path() + QStringLiteral("/dev/dri/renderD128")).constData(), 0400), 0);
    // Root may open everything, so a process of another user looks.
    EXPECT_EXIT(
        {
            if (getuid() == 0 &&
                (chmod(QFile::encodeName(folder.path()).constData(), 0755) != 0 || setuid(65534) != 0))
                std::_Exit(2);
            std::_Exit(cards().size() == 1 && !cards().constFirst().isAccessible ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace tulvane::test
