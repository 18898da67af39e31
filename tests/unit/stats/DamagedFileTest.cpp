#include <stats/DamagedFile.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class DamagedFileTest : public ::testing::Test {
protected:
    [[nodiscard]] QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    ScratchFolder m_folder;
    QString m_name = QStringLiteral("s.json");
    QString m_path = m_folder.file(m_name);
};

TEST_F(DamagedFileTest, BytesSurviveTheReplacementOfTheFile)
{
    m_folder.write(m_name, "damaged");
    keepDamagedFile(m_path);
    EXPECT_EQ(m_folder.read(m_name), "damaged") << "the file itself stays";
    ASSERT_TRUE(QFile::remove(m_path));
    EXPECT_EQ(m_folder.read(QStringLiteral("s.json.damaged")), "damaged");
}

TEST_F(DamagedFileTest, EarlierOnesAreNotOverwritten)
{
    for (int i = 1; i <= 12; ++i) {
        QFile::remove(m_path);
        m_folder.write(m_name, QByteArray::number(i));
        keepDamagedFile(m_path);
    }
    EXPECT_EQ(m_folder.read(QStringLiteral("s.json.damaged")), "1");
    EXPECT_EQ(m_folder.read(QStringLiteral("s.json.damaged-2")), "2");
    EXPECT_EQ(m_folder.read(QStringLiteral("s.json.damaged-9")), "9");
    EXPECT_EQ(names().size(), 10);
}

TEST_F(DamagedFileTest, OfASymbolicLinkTheTargetsBytesAreKept)
{
    const QString target = m_folder.write(QStringLiteral("target"), "damaged");
    ASSERT_TRUE(QFile::link(target, m_path));
    keepDamagedFile(m_path);
    ASSERT_TRUE(QFile::remove(target));
    EXPECT_EQ(m_folder.read(QStringLiteral("s.json.damaged")), "damaged");
}

TEST_F(DamagedFileTest, AllAreRemovedAndNothingElse)
{
    m_folder.write(m_name, "damaged");
    keepDamagedFile(m_path);
    keepDamagedFile(m_path);
    m_folder.write(QStringLiteral("s.json.mine"), "x");
    removeDamagedFiles(m_path);
    EXPECT_EQ(names(), QStringList({m_name, QStringLiteral("s.json.mine")}));
}

} // namespace

} // namespace tulvane::test
