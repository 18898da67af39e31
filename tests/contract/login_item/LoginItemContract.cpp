#include <platform/fake/FakeLoginItem.h>
#include <platform/linux/desktop/AutostartEntry.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// Either backend, on a system that can change its mind without the program.
class FakeSystem {
public:
    [[nodiscard]] LoginItem& item() { return m_item; }
    void switchOffElsewhere() { std::ignore = m_item.setEnabled(false); }
    void refuse() { m_item.refuse(QStringLiteral("The disk is full.")); }
    void permit() { m_item.refuse(std::nullopt); }

private:
    FakeLoginItem m_item;
};

class AutostartSystem {
public:
    [[nodiscard]] LoginItem& item() { return m_item; }
    void switchOffElsewhere()
    {
        m_folder.write(QStringLiteral("autostart/com.dunio.Tulvane.desktop"),
                       "[Desktop Entry]\nExec=tulvane\nHidden=true\n");
    }
    /// A file in the folder's place stops the system's administrator, too.
    void refuse() { m_folder.write(QStringLiteral("autostart"), "not a folder"); }
    void permit() { QFile::remove(m_folder.file(QStringLiteral("autostart"))); }

private:
    ScratchFolder m_folder;
    AutostartEntry m_item{m_folder.file(QStringLiteral("autostart")), QStringLiteral("/usr/bin/tulvane")};
};

template <class System>
class LoginItemContract : public testing::Test {
protected:
    System m_system;
    LoginItem& m_item = m_system.item();
};

using Systems = testing::Types<FakeSystem, AutostartSystem>;
TYPED_TEST_SUITE(LoginItemContract, Systems);

} // namespace

TYPED_TEST(LoginItemContract, IsOffUntilItIsSwitchedOnAndAsOftenAsOneLikes)
{
    EXPECT_FALSE(this->m_item.isEnabled());
    EXPECT_TRUE(this->m_item.setEnabled(false));
    for (const bool enabled : {true, true, false, false, true}) {
        EXPECT_TRUE(this->m_item.setEnabled(enabled));
        EXPECT_EQ(this->m_item.isEnabled(), enabled);
    }
}

TYPED_TEST(LoginItemContract, IsReadAnewAtEachCall)
{
    ASSERT_TRUE(this->m_item.setEnabled(true));
    this->m_system.switchOffElsewhere();
    EXPECT_FALSE(this->m_item.isEnabled());
    EXPECT_TRUE(this->m_item.setEnabled(true));
    EXPECT_TRUE(this->m_item.isEnabled());
}

TYPED_TEST(LoginItemContract, ARefusalHasAReasonAndChangesNothing)
{
    this->m_system.refuse();
    const auto refused = this->m_item.setEnabled(true);
    ASSERT_FALSE(refused);
    EXPECT_FALSE(refused.error().isEmpty());
    EXPECT_FALSE(this->m_item.isEnabled());
    this->m_system.permit();
    EXPECT_TRUE(this->m_item.setEnabled(true));
    EXPECT_TRUE(this->m_item.isEnabled());
}

} // namespace tulvane::test
