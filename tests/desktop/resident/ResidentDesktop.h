#pragma once

#include <support/ScratchFolder.h>
#include <support/SoundServer.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <memory>

namespace tulvane::test {

/// What is spoken, and how it arrives.
inline constexpr auto said = "Hei, dette er en test.";
inline const QString heard = QStringLiteral("Hei, dette er en test. ");

/// A command line's words.
[[nodiscard]] inline QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(u' ');
}

/// What a run of the program's command line left behind.
struct CommandLineRun {
    int status = -1;
    QString out;
    QString err;
};

/// A desktop with a microphone, a keyboard, a text entry in front, and the resident program in a home of its
/// own with the demo model at the selected model's place. Throws std::runtime_error when something does not
/// start.
class ResidentDesktop final {
public:
    /// `openboxKeys`: the window manager's own key bindings.
    explicit ResidentDesktop(const QByteArray& openboxKeys = {});
    ResidentDesktop(const ResidentDesktop&) = delete;
    ResidentDesktop& operator=(const ResidentDesktop&) = delete;
    ~ResidentDesktop();

    /// Starts the resident program and waits until it answers. `before` is put in front of its command line.
    QProcess& launch(const QStringList& before = {});
    /// One call of the command line.
    [[nodiscard]] CommandLineRun tulvane(const QStringList& arguments) const;
    /// The same, only begun: it reads what is written to it, and ends by itself.
    [[nodiscard]] std::unique_ptr<QProcess> begin(const QStringList& arguments) const;
    [[nodiscard]] QJsonObject status() const;
    /// Returns whether the program came to this phase within the time limit.
    [[nodiscard]] bool waitForPhase(const QString& phase) const;

    /// Opens the text entry; returns once it has the focus.
    void openEntry();
    /// What stands in the entry, as its program last said.
    [[nodiscard]] QString entryText();
    [[nodiscard]] bool waitForEntry(const QString& text);

    /// Alt+Space, pressed and released.
    void pressHotkey();
    /// Speaks into the microphone, and returns once everything has been heard.
    void speak(const char* text);

    VirtualDesktop desktop;
    SoundServer sound;
    XTestKeys keys;
    ScratchFolder scratch;
    QByteArray log; ///< the program's, so far; see `readLog`
    void readLog() { log += m_program ? m_program->readAllStandardError() : QByteArray(); }

private:
    [[nodiscard]] QProcessEnvironment environment() const;
    void readEntry();

    std::unique_ptr<QProcess> m_program;
    QProcess* m_entry = nullptr;
    QString m_entryText;
    bool m_entryIsFocused = false;
};

} // namespace tulvane::test
