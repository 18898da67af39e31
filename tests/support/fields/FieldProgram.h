#pragma once

#include <support/VirtualDesktop.h>

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace tulvane::test {

/// Another program with one window, in which a test has a field of its choice shown. Texts are written with
/// the caret and the selection in them: "ab|c", or "a[b]c".
class FieldProgram final {
public:
    enum class Toolkit { gtk, qt };
    enum class Kind {
        line,
        area,
        password,
        readOnly,
        ignoring,  ///< accepts whatever is written, and keeps what it has
        shortLine, ///< holds twelve characters at most
    };

    /// Returns when the program has started. Throws std::runtime_error when it does not.
    FieldProgram(VirtualDesktop& desktop, Toolkit toolkit);
    /// The same over the program that `command` of this toolkit has started, on whichever desktop.
    FieldProgram(QProcess& process, Toolkit toolkit);
    /// What starts it; `platform` is Qt's word for the kind of display.
    [[nodiscard]] static QStringList command(Toolkit toolkit, const QString& platform);

    /// Returns when the field has the focus and its window is the active one.
    void show(Kind kind, const QString& marked);
    /// What the user sees there now.
    [[nodiscard]] QString marked();
    /// Returns when it takes itself for the program in front. It may do so already, if it has not heard yet
    /// that another one is.
    void comeToFront();
    [[nodiscard]] quint32 process() const { return static_cast<quint32>(m_process.processId()); }
    /// From now on it does not answer; until it is thawed, no other call here may be made.
    void freeze() const;
    void thaw() const;
    /// Ends it; no other call here may follow.
    void quit();

private:
    QJsonObject ask(const QJsonObject& command);

    QProcess& m_process;
    Toolkit m_toolkit;
};

} // namespace tulvane::test
