#include "LifeCycleDesktop.h"

#include <support/Await.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// The program among what a session manager keeps, which it brings back at the next login.
class SessionManager : public testing::Test {
protected:
    SessionManager()
        : m_manager(here.desktop.start(QStringLiteral("/usr/bin/python3"),
                                       {QStringLiteral(TULVANE_SESSION_MANAGER)}))
    {
        here.setUp();
        if (!waitUntil([this] { return m_manager.canReadLine(); }))
            throw std::runtime_error("no session manager: " + m_manager.readAllStandardError().toStdString());
        here.setVariable(QStringLiteral("SESSION_MANAGER"),
                         QString::fromUtf8(m_manager.readLine()).trimmed());
    }
    /// The values of a property of the program's, as the manager received it last.
    [[nodiscard]] QStringList property(const char* name)
    {
        while (m_manager.canReadLine()) {
            const QJsonObject line = QJsonDocument::fromJson(m_manager.readLine()).object();
            const QJsonObject told = line[QStringLiteral("properties")].toObject();
            for (auto one = told.constBegin(); one != told.constEnd(); ++one)
                m_properties.insert(one.key(), one.value());
        }
        QStringList values;
        for (const auto& value : m_properties[QLatin1String(name)].toArray())
            values.append(value.toString());
        return values;
    }

    LifeCycleDesktop here;

private:
    QProcess& m_manager;
    QJsonObject m_properties;
};

} // namespace

TEST_F(SessionManager, TheCommandThatItIsGivenBringsTheProgramBackInTheBackground)
{
    here.launch();
    ASSERT_TRUE(waitUntil([this] { return property("RestartCommand").size() > 2; }));
    QStringList command = property("RestartCommand");
    EXPECT_TRUE(command.first().endsWith(QStringLiteral("/tulvane-desktop"))) << qPrintable(command.first());
    EXPECT_TRUE(command.contains(QStringLiteral("-session")));
    // Only what runs at the logout is brought back; what the user has quit is not.
    const QStringList hint = property("RestartStyleHint");
    EXPECT_EQ(hint.value(0).front(), QChar(0)) << "restart if running";

    here.quit();
    QProcess& restored = here.launchProgram(command.takeFirst(), command);
    EXPECT_EQ(restored.state(), QProcess::Running);
    EXPECT_TRUE(here.windowTitles().isEmpty());
    EXPECT_EQ(here.tulvane({QStringLiteral("--background")}),
              QStringLiteral("Tulvane is running already.\n"));
}

} // namespace tulvane::test
