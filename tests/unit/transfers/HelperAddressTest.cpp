#include <platform/linux/transfers/HelperAddress.h>
#include <support/ScratchFolder.h>

#include <QFileInfo>

#include <gtest/gtest.h>

namespace tulvane::transfers {
namespace {

class HelperAddress : public ::testing::Test {
protected:
    HelperAddress() : m_before(qgetenv("XDG_RUNTIME_DIR")) { use(m_runtime.path()); }
    ~HelperAddress() override
    {
        if (m_before.isNull())
            qunsetenv("XDG_RUNTIME_DIR");
        else
            qputenv("XDG_RUNTIME_DIR", m_before);
    }
    static void use(const QString& folder) { qputenv("XDG_RUNTIME_DIR", folder.toLocal8Bit()); }
    [[nodiscard]] static QString address(const QString& folder = QStringLiteral("/data/Downloads"))
    {
        return helperSocketFor(folder).value_or(QString());
    }

    test::ScratchFolder m_runtime;
    QByteArray m_before;
};

TEST_F(HelperAddress, IsInAPrivateFolderOfTheRuntimeFolder)
{
    const QString folder = m_runtime.file(QStringLiteral("tulvane"));
    EXPECT_TRUE(address().startsWith(folder + u"/transfers-"));
    EXPECT_EQ(QFileInfo(folder).permissions() & 0x0fff,
              QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
}

TEST_F(HelperAddress, IsOneForEachFolder)
{
    EXPECT_EQ(address(), address());
    EXPECT_EQ(address(QStringLiteral("/data/Downloads/")), address());
    EXPECT_NE(address(QStringLiteral("/other/Downloads")), address());
}

TEST_F(HelperAddress, AFolderThatOthersCanEnterIsNotUsed)
{
    const QString folder = m_runtime.file(QStringLiteral("tulvane"));
    ASSERT_TRUE(QDir().mkdir(folder));
    ASSERT_TRUE(QFile::setPermissions(folder, QFileDevice::ReadUser | QFileDevice::WriteUser |
                                                  QFileDevice::ExeUser | QFileDevice::ExeOther));
    EXPECT_TRUE(address().startsWith(u"/tmp/tulvane-"));
}

TEST_F(HelperAddress, ALinkInTheFoldersPlaceIsNotUsed)
{
    ASSERT_TRUE(QDir().mkdir(m_runtime.file(QStringLiteral("elsewhere"))));
    ASSERT_TRUE(
        QFile::link(m_runtime.file(QStringLiteral("elsewhere")), m_runtime.file(QStringLiteral("tulvane"))));
    EXPECT_TRUE(address().startsWith(u"/tmp/tulvane-"));
}

TEST_F(HelperAddress, WithoutARuntimeFolderItIsInTheTemporaryOne)
{
    qunsetenv("XDG_RUNTIME_DIR");
    EXPECT_TRUE(address().startsWith(u"/tmp/tulvane-"));
    use(QStringLiteral("relative"));
    EXPECT_TRUE(address().startsWith(u"/tmp/tulvane-"));
}

TEST_F(HelperAddress, APathThatNoSocketCanHaveIsNotUsed)
{
    const QString deep = m_runtime.file(QString(100, u'd'));
    ASSERT_TRUE(QDir().mkdir(deep));
    use(deep);
    EXPECT_TRUE(address().startsWith(u"/tmp/tulvane-"));
}

} // namespace
} // namespace tulvane::transfers
