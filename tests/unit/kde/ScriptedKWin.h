#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace tulvane::test {

/// KWin, as far as a program loads scripts into it. A script that runs calls the program that it names.
class ScriptedKWin final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kwin.Scripting")

public:
    ScriptedKWin() = default;
    Q_DISABLE_COPY_MOVE(ScriptedKWin)
    ~ScriptedKWin() override { disappear(); }

    /// Has its name on the bus at this address; `takesScripts` says whether it has its object as well.
    void appear(const QString& address, bool takesScripts = true);
    void takeScripts();
    /// Its process ends, and its scripts with it.
    void disappear();
    /// A window comes to the front: the scripts that run call their programs.
    void activate(const QString& resourceClass, int process) const;
    /// The call that a script makes, from this connection.
    void callFrom(QDBusConnection bus, const QString& resourceClass, int process) const;
    [[nodiscard]] bool hasScript() const { return m_isRunning; }

    bool keepsAScript = false; ///< under our name, from before
    int unloads = 0;

public Q_SLOTS:
    int loadScript(const QString& file, const QString& name);
    bool unloadScript(const QString& name);

private:
    friend class ScriptedScript;

    QString m_connection;
    QString m_program; ///< that the script calls
    QString m_object;
    bool m_isRunning = false;
    std::unique_ptr<QObject> m_script;
};

/// A script in it, as KWin 6 has them.
class ScriptedScript final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kwin.Script")

public:
    explicit ScriptedScript(ScriptedKWin& kwin) : m_kwin(kwin) {}

public Q_SLOTS:
    void run() { m_kwin.m_isRunning = true; }

private:
    ScriptedKWin& m_kwin;
};

} // namespace tulvane::test
