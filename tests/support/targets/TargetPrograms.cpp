#include "TargetPrograms.h"

#include "AwaitProgram.h"
#include "ChromiumTarget.h"
#include "JsonProcess.h"

#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <support/Paths.h>

#include <QFile>

#include <stdexcept>

namespace tulvane::test {

namespace {

// Debian's own, since only that knows the system's GTK.
const auto python = QStringLiteral("/usr/bin/python3");

QString script(const char* name)
{
    return sourceFolder() + QStringLiteral("/tests/support/targets/") + QString::fromLatin1(name);
}

/// A program that speaks as gtk_target.py does.
class FieldTarget : public TargetProgram {
public:
    FieldTarget(QProcess& process, bool takesLineBreaks)
        : m_requests(process, '\n'),
          m_takesLineBreaks(takesLineBreaks)
    {
        awaitProgram(process, "the window did not get the focus",
                     [&] { return m_requests.count(QStringLiteral("ready")) > 0; });
    }

    [[nodiscard]] QByteArray text() override
    {
        return ask(QStringLiteral("report"))[QStringLiteral("text")].toString().toUtf8();
    }
    void clear() override { ask(QStringLiteral("clear")); }
    [[nodiscard]] QString focus() override
    {
        return ask(QStringLiteral("report"))[QStringLiteral("focus")].toString();
    }
    [[nodiscard]] bool takesLineBreaks() const override { return m_takesLineBreaks; }
    [[nodiscard]] JsonProcess* requests() override { return &m_requests; }

private:
    QJsonObject ask(const QString& what) { return m_requests.ask({{QStringLiteral("do"), what}}); }

    JsonProcess m_requests;
    bool m_takesLineBreaks;
};

/// The file into which terminal_reader.py writes.
class Reader {
public:
    Reader(QProcess& terminal, QString file) : m_file(std::move(file))
    {
        awaitProgram(terminal, "nothing runs in the terminal", [&] { return QFile::exists(m_file); });
    }
    [[nodiscard]] QByteArray got() const { return all().mid(m_from); }
    void clear() { m_from = all().size(); }

private:
    [[nodiscard]] QByteArray all() const
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString m_file;
    qsizetype m_from = 0;
};

class VteTarget final : public FieldTarget {
public:
    VteTarget(QProcess& process, const QString& file) : FieldTarget(process, false), m_reader(process, file)
    {
    }
    [[nodiscard]] QByteArray text() override { return m_reader.got(); }
    void clear() override { m_reader.clear(); }

private:
    Reader m_reader;
};

/// It tells nothing about itself, and has no other widget.
class XtermTarget final : public TargetProgram {
public:
    XtermTarget(QProcess& terminal, const QString& file) : m_reader(terminal, file) {}
    [[nodiscard]] QByteArray text() override { return m_reader.got(); }
    void clear() override { m_reader.clear(); }
    [[nodiscard]] QString focus() override { return QStringLiteral("field"); }
    [[nodiscard]] bool takesLineBreaks() const override { return false; }

private:
    Reader m_reader;
};

/// Alike on every system: the same locale, no input method, and none of the processes that serve
/// accessibility.
QProcess& startPlain(VirtualDesktop& desktop, const QStringList& command)
{
    const QStringList settings{QStringLiteral("LC_ALL=C.UTF-8"),
                               QStringLiteral("GTK_IM_MODULE=gtk-im-context-simple"),
                               QStringLiteral("NO_AT_BRIDGE=1")};
    return desktop.start(QStringLiteral("env"), settings + command);
}

std::unique_ptr<TargetProgram> startGtk(VirtualDesktop& desktop, const char* kind)
{
    QProcess& process = startPlain(desktop, {python, script("gtk_target.py"), QString::fromLatin1(kind)});
    return std::make_unique<FieldTarget>(process, qstrcmp(kind, "view") == 0);
}

std::unique_ptr<TargetProgram> startQt(VirtualDesktop& desktop, const char* kind)
{
    QProcess& process = startPlain(desktop, {QStringLiteral(TULVANE_QT_TARGET), QString::fromLatin1(kind),
                                             QStringLiteral("-platform"), QStringLiteral("xcb")});
    return std::make_unique<FieldTarget>(process, qstrcmp(kind, "text") == 0);
}

std::unique_ptr<TargetProgram> startXterm(VirtualDesktop& desktop)
{
    const QString file = desktop.home() + QStringLiteral("/received");
    QProcess& terminal =
        startPlain(desktop, {QStringLiteral("xterm"), QStringLiteral("-u8"), QStringLiteral("-e"), python,
                             script("terminal_reader.py"), file});
    auto target = std::make_unique<XtermTarget>(terminal, file);
    // The reader may run before the window manager has given the window the focus.
    const auto link = X11Connection::open(desktop.display().toLocal8Bit());
    awaitProgram(terminal, "the window did not get the focus",
                 [&] { return FrontWindow::current(*link).classes.contains(QStringLiteral("XTerm")); });
    return target;
}

std::unique_ptr<TargetProgram> startVte(VirtualDesktop& desktop)
{
    const QString file = desktop.home() + QStringLiteral("/received");
    QProcess& process = startPlain(desktop, {python, script("gtk_target.py"), QStringLiteral("terminal"),
                                             python, script("terminal_reader.py"), file});
    return std::make_unique<VteTarget>(process, file);
}

} // namespace

std::unique_ptr<TargetProgram> startTarget(Target target, VirtualDesktop& desktop)
{
    switch (target) {
    case Target::gtkEntry:
        return startGtk(desktop, "entry");
    case Target::gtkTextView:
        return startGtk(desktop, "view");
    case Target::qtLineEdit:
        return startQt(desktop, "line");
    case Target::qtTextEdit:
        return startQt(desktop, "text");
    case Target::chromium:
        return std::make_unique<ChromiumTarget>(desktop);
    case Target::xterm:
        return startXterm(desktop);
    case Target::vteTerminal:
        return startVte(desktop);
    }
    throw std::logic_error("no such target");
}

QString targetName(Target target)
{
    switch (target) {
    case Target::gtkEntry:
        return QStringLiteral("gtkEntry");
    case Target::gtkTextView:
        return QStringLiteral("gtkTextView");
    case Target::qtLineEdit:
        return QStringLiteral("qtLineEdit");
    case Target::qtTextEdit:
        return QStringLiteral("qtTextEdit");
    case Target::chromium:
        return QStringLiteral("chromium");
    case Target::xterm:
        return QStringLiteral("xterm");
    case Target::vteTerminal:
        return QStringLiteral("vteTerminal");
    }
    return {};
}

} // namespace tulvane::test
