#pragma once

#include <support/ScratchFolder.h>
#include <support/SoundServer.h>
#include <support/VirtualDesktop.h>

#include <QHash>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <memory>

namespace tulvane::test {

/// A desktop with a microphone, and the program in a home of its own. Throws std::runtime_error when
/// something does not start.
class LifeCycleDesktop final {
public:
    LifeCycleDesktop();
    LifeCycleDesktop(const LifeCycleDesktop&) = delete;
    LifeCycleDesktop& operator=(const LifeCycleDesktop&) = delete;
    ~LifeCycleDesktop();

    /// Puts the demo model at the selected model's place and answers the setup, so that nothing is missing;
    /// the interface speaks English.
    void setUp() const;
    /// The preferences of an application's domain, as it would have left them.
    void writeDomain(const QString& domain, const QByteArray& json) const;
    [[nodiscard]] QJsonObject preferences() const;
    /// A file under the user's folder for applications' data, and the path of one.
    void writeData(const QString& file, const QByteArray& content) const;
    [[nodiscard]] QString data(const QString& file) const;

    /// A variable of what is started from now on.
    void setVariable(const QString& name, const QString& value) { m_variables.insert(name, value); }
    /// Starts the resident program and returns once it answers.
    QProcess& launch(const QStringList& arguments = {QStringLiteral("--background")});
    /// The same by another command line than the usual.
    QProcess& launchProgram(const QString& program, const QStringList& arguments);
    /// Asks the program to end, and waits.
    void quit();
    [[nodiscard]] QProcess& program() { return *m_program; }
    /// A call of the command line that goes on.
    [[nodiscard]] std::unique_ptr<QProcess> begin(const QStringList& arguments) const;
    /// One call of the command line, waited for. Its standard output and then its standard error.
    [[nodiscard]] QString tulvane(const QStringList& arguments) const;
    [[nodiscard]] QJsonObject status() const;
    /// Whether a program answers at all.
    [[nodiscard]] bool answers() const { return !status().isEmpty(); }
    [[nodiscard]] bool waitForPhase(const QString& phase) const;
    /// The process that holds the program's name on the session bus; 0 for none.
    [[nodiscard]] qint64 process() const;
    /// What the program has logged so far.
    [[nodiscard]] QString log();

    /// What xdotool answers; empty when it finds nothing.
    [[nodiscard]] QString xdotool(const QStringList& arguments) const;
    /// Gives the focus to the control of the window in front that has this accessible name; its value.
    [[nodiscard]] QString focus(const QString& name);
    /// Whether a text or a control of that name comes to be shown.
    [[nodiscard]] bool shows(const QString& name) const;
    /// Titles of the program's windows that are mapped, without those that have none.
    [[nodiscard]] QStringList windowTitles() const;
    [[nodiscard]] bool waitForWindow(const QString& title) const;
    /// The window that has the focus, by the window manager's key for it.
    void closeWindow() const;
    [[nodiscard]] bool waitForNoWindow() const;

    VirtualDesktop desktop;
    SoundServer sound;
    ScratchFolder scratch;

private:
    [[nodiscard]] QProcessEnvironment environment() const;

    QHash<QString, QString> m_variables;
    std::unique_ptr<QProcess> m_program;
    QByteArray m_log;
};

} // namespace tulvane::test
