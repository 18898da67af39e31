// The text goes from the inserter to the program in front, and is to be found nowhere else.
#include "InsertionFixture.h"

#include <support/ScratchFolder.h>

#include <QDir>
#include <QDirIterator>

namespace tulvane::test {
namespace {

using namespace std::chrono_literals;

const QByteArray marker = "Rabarbrasyltetøy17";

class Secrecy : public InsertionFixture {
protected:
    /// Whether the marker is among the arguments or in the environment of any process.
    static bool isInAProcess()
    {
        const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
        for (const QString& process : processes) {
            for (const char* name : {"cmdline", "environ"}) {
                QFile file(QStringLiteral("/proc/%1/%2").arg(process, QString::fromLatin1(name)));
                if (file.open(QIODevice::ReadOnly) && file.readAll().contains(marker))
                    return true;
            }
        }
        return false;
    }
    /// Whether the marker is in a file below the desktop's home, where programs keep what they keep.
    [[nodiscard]] bool isInAFile() const
    {
        QDirIterator files(m_desktop.home(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains(marker))
                return true;
        }
        return false;
    }
    void expectSecret(const QString& text, InsertionResult expected)
    {
        const auto task = start(text);
        while (!task.isReady()) {
            ASSERT_FALSE(isInAProcess());
            std::ignore = waitUntil([&] { return task.isReady(); }, 20ms);
        }
        EXPECT_EQ(finished(task), expected);
        EXPECT_FALSE(isInAProcess());
        EXPECT_FALSE(isInAFile());
        EXPECT_FALSE(m_log.contains(QString::fromUtf8(marker)));
    }

    const QString m_said = QString::fromUtf8(marker) + QStringLiteral(" på skiva ");
};

TEST_F(Secrecy, theTextIsInNoProcessNoFileAndNoLogLine)
{
    open(Target::gtkTextView);
    readLate(500ms);
    expectSecret(m_said, InsertionResult::pasted);
    expectHeld(m_said);
}

TEST_F(Secrecy, neitherWhenNobodyReadsIt)
{
    open(Target::gtkTextView);
    readLate(never);
    expectSecret(m_said, InsertionResult::copiedToClipboard);
    // The failure itself is told of.
    EXPECT_FALSE(m_log.texts("insertion", QtWarningMsg).isEmpty());
}

TEST_F(Secrecy, theLookFindsWhatIsThere)
{
    EXPECT_FALSE(isInAProcess());
    // A shell that waits for a line of input.
    m_desktop.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("read line"),
                                           QStringLiteral("sh"), QString::fromUtf8(marker)});
    EXPECT_TRUE(waitUntil([] { return isInAProcess(); }));
    EXPECT_FALSE(isInAFile());
    QFile file(m_desktop.home() + QStringLiteral("/kept"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x" + marker);
    file.close();
    EXPECT_TRUE(isInAFile());
}

} // namespace
} // namespace tulvane::test
