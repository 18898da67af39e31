#include <support/Paths.h>
#include <support/Signals.h>
#include <support/fields/FieldProgram.h>

#include <QDeadlineTimer>
#include <QJsonDocument>

#include <csignal>
#include <stdexcept>

namespace tulvane::test {

namespace {

constexpr int answerTimeout = 30000;

QProcess& startedProgram(VirtualDesktop& desktop, FieldProgram::Toolkit toolkit)
{
    QStringList command = FieldProgram::command(toolkit, QStringLiteral("xcb"));
    return desktop.start(command.takeFirst(), command);
}

QString nameOf(FieldProgram::Kind kind)
{
    switch (kind) {
    case FieldProgram::Kind::line:
        return QStringLiteral("line");
    case FieldProgram::Kind::area:
        return QStringLiteral("area");
    case FieldProgram::Kind::password:
        return QStringLiteral("password");
    case FieldProgram::Kind::readOnly:
        return QStringLiteral("readOnly");
    case FieldProgram::Kind::ignoring:
        return QStringLiteral("ignoring");
    case FieldProgram::Kind::shortLine:
        break;
    }
    return QStringLiteral("short");
}

/// The program's own offset of an index into the text, and back.
int offsetOf(FieldProgram::Toolkit toolkit, const QString& text, qsizetype index)
{
    return static_cast<int>(toolkit == FieldProgram::Toolkit::qt ? index : text.left(index).toUcs4().size());
}

qsizetype indexOf(FieldProgram::Toolkit toolkit, const QString& text, int offset)
{
    if (toolkit == FieldProgram::Toolkit::qt)
        return offset;
    const QList<uint> points = text.toUcs4();
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(points.constData()), offset).size();
}

} // namespace

QStringList FieldProgram::command(Toolkit toolkit, const QString& platform)
{
    if (toolkit == Toolkit::gtk)
        return {QStringLiteral("/usr/bin/python3"), sourceFolder() + u"/tests/support/fields/gtk_fields.py"};
    // Qt shows itself on the accessibility bus only where a client has asked for it.
    return {QStringLiteral("/usr/bin/env"), QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1"),
            u"QT_QPA_PLATFORM=" + platform, QStringLiteral(TULVANE_QT_FIELDS)};
}

FieldProgram::FieldProgram(VirtualDesktop& desktop, Toolkit toolkit)
    : FieldProgram(startedProgram(desktop, toolkit), toolkit)
{
}

FieldProgram::FieldProgram(QProcess& process, Toolkit toolkit) : m_process(process), m_toolkit(toolkit)
{
    comeToFront();
}

void FieldProgram::show(Kind kind, const QString& marked)
{
    QString text = marked;
    const bool hasSelection = marked.contains(u'[');
    const qsizetype start = text.indexOf(hasSelection ? u'[' : u'|');
    text.remove(start, 1);
    qsizetype end = start;
    if (hasSelection) {
        end = text.indexOf(u']');
        text.remove(end, 1);
    }
    (void)ask({{QStringLiteral("show"), nameOf(kind)},
               {QStringLiteral("text"), text},
               {QStringLiteral("start"), offsetOf(m_toolkit, text, start)},
               {QStringLiteral("end"), offsetOf(m_toolkit, text, end)}});
}

QString FieldProgram::marked()
{
    const QJsonObject state = ask({{QStringLiteral("read"), true}});
    QString text = state.value(u"text").toString();
    const qsizetype start = indexOf(m_toolkit, text, state.value(u"start").toInt());
    const qsizetype end = indexOf(m_toolkit, text, state.value(u"end").toInt());
    if (start == end)
        return text.insert(indexOf(m_toolkit, text, state.value(u"caret").toInt()), u'|');
    return text.insert(end, u']').insert(start, u'[');
}

void FieldProgram::comeToFront()
{
    (void)ask({{QStringLiteral("front"), true}});
}

void FieldProgram::freeze() const
{
    sendSignal(m_process, SIGSTOP);
}

void FieldProgram::thaw() const
{
    sendSignal(m_process, SIGCONT);
}

void FieldProgram::quit()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(answerTimeout))
        throw std::runtime_error("the program with the fields does not end");
}

QJsonObject FieldProgram::ask(const QJsonObject& command)
{
    m_process.write(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\n');
    const QDeadlineTimer deadline(answerTimeout);
    while (!m_process.canReadLine()) {
        if (deadline.hasExpired() || !m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            throw std::runtime_error("the program with the fields does not answer: " +
                                     m_process.readAllStandardError().toStdString());
    }
    return QJsonDocument::fromJson(m_process.readLine()).object();
}

} // namespace tulvane::test
