// An office program over its plain X11 toolkit, which takes the clipboard for itself after each paste.
// Skipped, aloud, where it is not installed: it is large.
#include "InsertionFixture.h"

#include <platform/linux/x11/clipboard/FrontWindow.h>

#include <QStandardPaths>

namespace tulvane::test {
namespace {

using namespace std::chrono_literals;

const auto said = QStringLiteral("Blåbærsyltetøy «på brød» – 5 € 😀 ");

class Office : public InsertionFixture {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(QStringLiteral("soffice")).isEmpty())
            GTEST_SKIP() << "Debian's libreoffice-writer is not installed";
        m_program = &m_desktop.start(QStringLiteral("env"),
                                     {QStringLiteral("SAL_USE_VCLPLUGIN=gen"),
                                      QStringLiteral("LC_ALL=C.UTF-8"), QStringLiteral("soffice"),
                                      QStringLiteral("--norestore"), QStringLiteral("--nologo"),
                                      QStringLiteral("--nofirststartwizard"), QStringLiteral("--writer")});
        ASSERT_TRUE(waitUntil(
            [&] {
                const QStringList classes = FrontWindow::current(*m_link).classes;
                return classes.contains(QStringLiteral("libreoffice-writer"), Qt::CaseInsensitive) ||
                       m_program->state() == QProcess::NotRunning;
            },
            60s));
        ASSERT_EQ(m_program->state(), QProcess::Running) << m_program->readAllStandardError().toStdString();
    }

    void pressWithControl(DeviceKey key)
    {
        m_fingers.press(DeviceKey::leftControl);
        m_fingers.tap(key);
        m_fingers.release(DeviceKey::leftControl);
    }
    /// What stands in the document, as it copies all of it.
    void expectDocument(const QString& text)
    {
        EXPECT_TRUE(waitUntil([&] {
            pressWithControl(DeviceKey::a);
            pressWithControl(DeviceKey::c);
            return waitUntil([&] { return clipboardText() == text.toUtf8(); }, 1s);
        })) << clipboardText().toStdString();
    }

    QProcess* m_program = nullptr;
};

TEST_F(Office, theTextArrivesAndTheUsersClipboardComesBackEachTime)
{
    QString all;
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        copySomething();
        EXPECT_EQ(insert(said), InsertionResult::pasted);
        all += said;
        EXPECT_TRUE(waitUntil([&] { return read(QStringLiteral("CLIPBOARD")) == m_copied; }, 3s));
        // And it stays: the program may think of the clipboard later.
        EXPECT_FALSE(waitUntil([&] { return read(QStringLiteral("CLIPBOARD")) != m_copied; }, 2s));
    }
    expectDocument(all);
}

} // namespace
} // namespace tulvane::test
