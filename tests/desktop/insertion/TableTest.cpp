// Programs of the paste table that a machine need not have. Each is skipped, aloud, where it is not
// installed.
#include "InsertionFixture.h"

#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <support/Paths.h>

#include <QFile>
#include <QStandardPaths>

namespace tulvane::test {
namespace {

using namespace std::chrono_literals;

const auto said = QStringLiteral("Blåbærsyltetøy\n«på brød» – 5 € 😀 ");

class OfTheTable : public InsertionFixture {
protected:
    [[nodiscard]] static bool isInstalled(const QString& program)
    {
        return !QStandardPaths::findExecutable(program).isEmpty();
    }
    /// Starts a program that writes what it gets into the file, with its window in front.
    void startProgram(const QString& windowClass, const QStringList& command)
    {
        QProcess& program = m_desktop.start(
            QStringLiteral("env"),
            QStringList{QStringLiteral("LC_ALL=C.UTF-8"), QStringLiteral("NO_AT_BRIDGE=1")} + command);
        ASSERT_TRUE(waitUntil(
            [&] {
                const bool isInFront =
                    FrontWindow::current(*m_link).classes.contains(windowClass, Qt::CaseInsensitive);
                return (isInFront && QFile::exists(m_file)) || program.state() == QProcess::NotRunning;
            },
            60s));
        ASSERT_EQ(program.state(), QProcess::Running) << program.readAllStandardError().toStdString();
    }
    [[nodiscard]] QByteArray got() const
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void expectGot(const QString& text)
    {
        EXPECT_TRUE(waitUntil([&] { return got() == text.toUtf8(); }, 5s)) << got().toStdString();
    }

    const QString m_file = m_desktop.home() + QStringLiteral("/received");
};

TEST_F(OfTheTable, emacs)
{
    if (!isInstalled(QStringLiteral("emacs")))
        GTEST_SKIP() << "Debian's emacs is not installed";
    const QString program =
        QStringLiteral("(progn (switch-to-buffer \"field\")"
                       " (run-with-timer 0 0.1 (lambda () (let ((coding-system-for-write 'utf-8-unix))"
                       " (with-current-buffer \"field\" (write-region nil nil \"%1\" nil 'silent))))))")
            .arg(m_file);
    startProgram(QStringLiteral("emacs"),
                 {QStringLiteral("emacs"), QStringLiteral("-Q"), QStringLiteral("--eval"), program});
    QString all;
    for (int round = 0; round < 3; ++round) {
        copySomething();
        EXPECT_EQ(insert(said), InsertionResult::pasted);
        all += said;
        expectGot(all);
        expectUsersContent();
    }
}

TEST_F(OfTheTable, coolRetroTerm)
{
    if (!isInstalled(QStringLiteral("cool-retro-term")))
        GTEST_SKIP() << "Debian's cool-retro-term is not installed";
    startProgram(QStringLiteral("cool-retro-term"),
                 {QStringLiteral("cool-retro-term"), QStringLiteral("-e"), QStringLiteral("/usr/bin/python3"),
                  sourceFolder() + QStringLiteral("/tests/support/targets/terminal_reader.py"), m_file});
    // Drawn without a graphics card it is slow to begin.
    m_fingers.tap(DeviceKey::q);
    expectGot(QStringLiteral("q"));
    EXPECT_EQ(insert(said), InsertionResult::pasted);
    expectGot(QStringLiteral("q") + QString(said).replace(u'\n', u' '));
    expectUsersContent();
}

} // namespace
} // namespace tulvane::test
