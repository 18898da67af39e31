#include "InsertionFixture.h"

#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <platform/linux/x11/keyboard/KeyboardState.h>

#include <algorithm>
#include <random>
#include <stdexcept>

namespace tulvane::test {

namespace {

/// A picture's worth of bytes, every value among them.
QByteArray binary(int seed)
{
    std::mt19937 random(static_cast<unsigned>(seed));
    QByteArray bytes("\x89PNG\r\n\x1a\n");
    for (int i = 0; i < 20000; ++i)
        bytes.append(static_cast<char>(random() & 0xff));
    return bytes;
}

Content someContent(const QString& text, int seed)
{
    const QByteArray utf8 = text.toUtf8();
    return {{QStringLiteral("UTF8_STRING"), utf8},
            {QStringLiteral("text/plain"), utf8},
            {QStringLiteral("text/html"), "<b>" + utf8 + "</b>"},
            {QStringLiteral("image/png"), binary(seed)}};
}

void offer(ScriptedOwner& owner, const Content& content)
{
    QList<std::pair<QString, ScriptedOwner::Target>> targets;
    for (auto each = content.cbegin(); each != content.cend(); ++each)
        targets.append({each.key(), ScriptedOwner::Target(each.value())});
    owner.offer(targets);
    owner.own();
}

/// Where two texts part, without filling the screen with thousands of characters.
std::string difference(const QByteArray& expected, const QByteArray& got)
{
    const auto [one, other] = std::ranges::mismatch(expected, got);
    const qsizetype at = one - expected.begin();
    return QStringLiteral("%1 bytes instead of %2; from byte %3 on “%4” instead of “%5”")
        .arg(got.size())
        .arg(expected.size())
        .arg(at)
        .arg(QString::fromUtf8(got.mid(at, 30)), QString::fromUtf8(expected.mid(at, 30)))
        .toStdString();
}

} // namespace

InsertionFixture::InsertionFixture()
{
    m_elements.script->present = false;
    copySomething();
}

void InsertionFixture::open(Target target)
{
    m_target = startTarget(target, m_desktop);
}

void InsertionFixture::copySomething()
{
    ++m_copies;
    m_copied = someContent(QStringLiteral("copied «%1» på norsk").arg(m_copies), m_copies);
    m_selected = someContent(QStringLiteral("selected – %1").arg(m_copies), -m_copies);
    offer(m_clipboardOwner, m_copied);
    offer(m_selectionOwner, m_selected);
}

QCoro::Task<InsertionResult> InsertionFixture::start(const QString& text)
{
    return m_inserter.insert(text, InsertionMethod::paste, true);
}

InsertionResult InsertionFixture::insert(const QString& text)
{
    return finished(start(text));
}

void InsertionFixture::expectArrives(const QString& text)
{
    m_target->clear();
    copySomething();
    const xcb_window_t window = front();
    ASSERT_EQ(m_target->focus(), QStringLiteral("field"));
    EXPECT_EQ(insert(text), InsertionResult::pasted);
    expectHeld(text);
    expectUsersContent();
    // A program may hand the focus from one window of its own to another.
    EXPECT_TRUE(FrontWindow::sameProgram(*m_link, front(), window));
    EXPECT_EQ(m_target->focus(), QStringLiteral("field"));
    // And nothing has come after it.
    expectHeld(text);
}

void InsertionFixture::expectHeld(const QString& text)
{
    const QByteArray expected = text.toUtf8();
    QByteArray got;
    const bool exact = waitUntil(
        [&] {
            got = m_target->text();
            return got == expected;
        },
        std::chrono::seconds(5));
    EXPECT_TRUE(exact) << difference(expected, got);
}

void InsertionFixture::expectUsersContent()
{
    EXPECT_TRUE(read(QStringLiteral("CLIPBOARD")) == m_copied);
    EXPECT_TRUE(read(QStringLiteral("PRIMARY")) == m_selected);
}

Content InsertionFixture::read(const QString& selection)
{
    std::optional<PasteboardContents> contents;
    SelectionReader read(*m_link, m_scheduler, m_link->makeHiddenWindow(), m_link->atom(selection),
                         [&](const SelectionReader::Outcome& outcome) { contents = outcome.contents; });
    read.begin();
    if (!waitUntil([&] { return contents.has_value(); }))
        throw std::runtime_error("the selection was not read in time");
    EXPECT_TRUE(contents->complete);
    return contents->items.isEmpty() ? Content() : contents->items.first().dataByType;
}

QByteArray InsertionFixture::clipboardText()
{
    return read(QStringLiteral("CLIPBOARD")).value(QStringLiteral("UTF8_STRING"));
}

QByteArray InsertionFixture::readElsewhere(const QString& target)
{
    // Not run to its end at once: it is this process that answers it.
    QProcess& program =
        m_desktop.start(QStringLiteral("xclip"), {QStringLiteral("-o"), QStringLiteral("-selection"),
                                                  QStringLiteral("clipboard"), QStringLiteral("-t"), target});
    EXPECT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; }));
    return program.readAllStandardOutput();
}

xcb_window_t InsertionFixture::front()
{
    return FrontWindow::current(*m_link).window;
}

QList<xcb_keycode_t> InsertionFixture::down()
{
    return KeyboardState::current(*m_link).down;
}

void InsertionFixture::readLate(std::chrono::milliseconds after)
{
    m_target->requests()->ask({{QStringLiteral("do"), QStringLiteral("readLate")},
                               {QStringLiteral("after"), static_cast<int>(after.count())}});
    m_target->requests()->forgetTold();
}

bool InsertionFixture::isAsked() const
{
    return m_target->requests()->count(QStringLiteral("pasteAsked")) > 0;
}

InsertionResult resultOf(const QCoro::Task<InsertionResult>& task)
{
    std::optional<InsertionResult> answer;
    // Awaiting a finished task answers at once.
    const auto take = [&]() -> QCoro::Task<> { answer = co_await task; };
    take();
    if (!answer)
        throw std::runtime_error("the insertion is not finished");
    return *answer;
}

InsertionResult finished(const QCoro::Task<InsertionResult>& task)
{
    if (!waitUntil([&] { return task.isReady(); }))
        throw std::runtime_error("the insertion did not finish in time");
    return resultOf(task);
}

} // namespace tulvane::test
