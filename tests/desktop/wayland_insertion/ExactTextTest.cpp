// What is inserted on sway and on KDE arrives exactly in programs of each toolkit, and the clipboard comes
// back.
#include <insertion/PasteTable.h>
#include <insertion/TextInserter.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KWinFront.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/UnwatchedPrivacyPermissions.h>
#include <platform/linux/session/WaylandOffers.h>
#include <platform/linux/sway/SwayFront.h>
#include <platform/linux/wayland/clipboard/DataControlPasteboards.h>
#include <platform/linux/wayland/fields/InputMethodElements.h>
#include <platform/linux/wayland/keyboard/DeviceKeyPosting.h>
#include <platform/linux/wayland/keyboard/FakeInput.h>
#include <platform/linux/wayland/keyboard/VirtualKeyboard.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/Soak.h>
#include <support/targets/JsonProcess.h>
#include <support/targets/RandomText.h>
#include <support/wayland/WaylandDesktop.h>

#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace tulvane::test {

namespace {

using Kind = WaylandDesktop::Kind;

struct Program {
    Kind kind;
    std::string name;
    QStringList command; ///< of a terminal: without what runs in it
    QStringList environment = {};
    bool isTerminal = false;
    InsertionMethod method = InsertionMethod::paste;

    bool isSilent = false; ///< shows nothing over accessibility: the input method alone reaches it

    [[nodiscard]] bool isWrittenInto() const { return method != InsertionMethod::paste && !isTerminal; }
    /// The input method sends no text with a blank last line.
    [[nodiscard]] InsertionResult expected(const QString& text) const
    {
        const QString lastLine = text.mid(text.lastIndexOf(u'\n') + 1);
        const bool isPasted =
            !isWrittenInto() || (isSilent && lastLine.size() < text.size() && lastLine.trimmed().isEmpty());
        return isPasted ? InsertionResult::pasted : InsertionResult::inserted;
    }
};

QString script(const char* name)
{
    return sourceFolder() + QStringLiteral("/tests/support/targets/") + QString::fromLatin1(name);
}

std::vector<Program> programsOn(Kind kind)
{
    const QString python = QStringLiteral("/usr/bin/python3");
    const Program terminal =
        kind == Kind::sway
            ? Program{kind, "Foot", {QStringLiteral("foot")}, {}, true}
            : Program{kind, "Xterm", {QStringLiteral("xterm"), QStringLiteral("-e")}, {}, true};
    return {
        {kind, "Gtk3", {python, script("gtk_target.py"), QStringLiteral("view")}},
        {kind, "Gtk4", {python, script("gtk4_target.py")}},
        {kind,
         "Qt6",
         {QCoreApplication::applicationDirPath() + QStringLiteral("/tulvane_qt_target"),
          QStringLiteral("text")},
         // It shows itself over accessibility only where a reader had asked before it started.
         {QStringLiteral("QT_QPA_PLATFORM=wayland"), QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1")}},
        {kind,
         "X11",
         {python, script("gtk_target.py"), QStringLiteral("view")},
         {QStringLiteral("GDK_BACKEND=x11")}},
        terminal};
}

std::vector<Program> silentPrograms()
{
    std::vector<Program> all = programsOn(Kind::sway);
    all.resize(2);
    for (Program& program : all) {
        program.name += "Silent";
        program.isSilent = true;
    }
    all.at(0).environment = {QStringLiteral("NO_AT_BRIDGE=1")};
    all.at(1).environment = {QStringLiteral("GTK_A11Y=none")};
    return all;
}

std::vector<Program> allPrograms()
{
    std::vector<Program> all = programsOn(Kind::sway);
    std::ranges::copy(programsOn(Kind::kwin), std::back_inserter(all));
    std::vector<Program> committed = all;
    std::ranges::copy(silentPrograms(), std::back_inserter(committed));
    for (Program& program : committed) {
        program.method = InsertionMethod::accessibilityThenPaste;
        program.name += "Committed";
    }
    std::ranges::copy(committed, std::back_inserter(all));
    return all;
}

const std::vector<Program>& programs()
{
    static const std::vector<Program> all = allPrograms();
    return all;
}

/// A program's field, and what stands in it.
class Field {
public:
    Field() = default;
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;
    virtual ~Field() = default;
    virtual QString text() = 0;
    virtual void clear() = 0;
    /// How often its text has changed.
    virtual qint64 changes() = 0;
};

class ToolkitField final : public Field {
public:
    /// `isSilent`: the program reports a change only in answer to a request.
    ToolkitField(QProcess& process, bool isSilent) : m_program(process, '\n'), m_isSilent(isSilent)
    {
        EXPECT_TRUE(waitUntil([this] { return m_program.count(QStringLiteral("ready")) > 0; }));
    }
    QString text() override
    {
        return m_program.ask({{QStringLiteral("do"), QStringLiteral("report")}})[QStringLiteral("text")]
            .toString();
    }
    void clear() override { (void)m_program.ask({{QStringLiteral("do"), QStringLiteral("clear")}}); }
    qint64 changes() override
    {
        return m_isSilent ? text().size() : m_program.count(QStringLiteral("changed"));
    }

private:
    JsonProcess m_program;
    bool m_isSilent;
};

/// A terminal in which a program keeps what it gets.
class TerminalField final : public Field {
public:
    explicit TerminalField(const QString& file) : m_file(file)
    {
        EXPECT_TRUE(waitUntil([this] { return m_file.exists(); }));
    }
    QString text() override { return QString::fromUtf8(bytes().mid(m_before)); }
    void clear() override { m_before = bytes().size(); }
    qint64 changes() override { return bytes().size(); }

private:
    QByteArray bytes()
    {
        QFile file(m_file.fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QFile m_file;
    qsizetype m_before = 0;
};

/// The window in front as KWin tells it.
class KdeFront final : public FrontPrograms {
public:
    explicit KdeFront(std::shared_ptr<LastingBus> bus) : m_kwin(std::move(bus)) {}
    [[nodiscard]] FrontProgram current() override
    {
        const KWinWindow& window = m_kwin.current();
        if (window.id.isEmpty())
            return {};
        return {.window = qHash(window.id) | 1U,
                .classes = {window.resourceClass},
                .process = window.process,
                .isX11 = window.isX11};
    }

private:
    KWinFront m_kwin;
};

std::shared_ptr<FrontPrograms> frontOf(const WaylandDesktop& desktop, Kind kind)
{
    if (kind == Kind::kwin)
        return std::make_shared<KdeFront>(std::make_shared<LastingBus>(desktop.bus()));
    return std::make_shared<SwayFront>(std::shared_ptr<SwayConnection>(
        SwayConnection::open(SwayConnection::socketOf(desktop.environment()))));
}

std::unique_ptr<KeyDevice> deviceOf(const QByteArray& socket, Kind kind)
{
    std::shared_ptr<WaylandConnection> connection = WaylandConnection::open(socket);
    if (kind == Kind::kwin)
        return FakeInput::make(std::move(connection));
    return VirtualKeyboard::make(std::move(connection));
}

KeyObstacles noObstacles()
{
    return {};
}

/// Where a text that arrived is another one than it should be.
std::string difference(const QString& shown, const QString& wanted)
{
    const auto [here, there] = std::ranges::mismatch(shown, wanted);
    const auto place = std::distance(shown.begin(), here);
    constexpr qsizetype some = 12;
    const auto around = [&](const QString& text) {
        QStringList codes;
        for (const QChar& unit : text.mid(std::max<qsizetype>(0, place - 2), some))
            codes.append(QString::number(unit.unicode(), 16));
        return codes.join(u' ').toStdString();
    };
    return std::to_string(shown.size()) + " of " + std::to_string(wanted.size()) + ", other from " +
           std::to_string(place) + " on: " + around(shown) + " for " + around(wanted);
}

/// The program's way to a field on a desktop, and the field.
class World final {
public:
    explicit World(const Program& program) : m_kind(program.kind), m_method(program.method)
    {
        QStringList command =
            QStringList{QStringLiteral("/usr/bin/env")} + program.environment + program.command;
        const QString kept = m_desktop.home() + QStringLiteral("/kept");
        if (program.isTerminal)
            command += {QStringLiteral("/usr/bin/python3"), script("terminal_reader.py"), kept};
        QProcess& process = m_desktop.start(command.takeFirst(), command);
        if (program.isTerminal)
            m_field = std::make_unique<TerminalField>(kept);
        else
            m_field = std::make_unique<ToolkitField>(process, program.name.starts_with("Qt"));
        EXPECT_TRUE(waitUntil([this] { return m_front->current().process != 0; }));
        // A program may show itself over accessibility only a moment after its window.
        EXPECT_TRUE(
            waitUntil([&] { return !program.isWrittenInto() || await(m_elements.focused()) != nullptr; }));
    }
    Field& field() { return *m_field; }
    InsertionResult insert(const QString& what)
    {
        m_visibleAfter = -1;
        InsertionResult result = InsertionResult::copiedToClipboard;
        bool isDone = false;
        const auto task = [](World& world, QString inserted, InsertionResult& into,
                             bool& done) -> QCoro::Task<> {
            into = co_await world.m_inserter.insert(inserted, world.m_method, true);
            done = true;
        }(*this, what, result, isDone);
        const qint64 before = m_field->changes();
        QElapsedTimer clock;
        clock.start();
        EXPECT_TRUE(waitUntil([&] {
            if (m_visibleAfter < 0 && m_field->changes() > before)
                m_visibleAfter = clock.elapsed();
            return isDone;
        }));
        return result;
    }

    Pasteboard& board() { return m_boards->general(); }
    /// Milliseconds from the call to the text in the field.
    [[nodiscard]] qint64 visibleAfter() const { return m_visibleAfter; }

private:
    Kind m_kind;
    InsertionMethod m_method;
    WaylandDesktop m_desktop{m_kind, {.x11 = true}};
    QByteArray m_socket = WaylandConnection::socketOf(m_desktop.environment());
    EventLoopScheduler m_scheduler;
    std::shared_ptr<FrontPrograms> m_front = frontOf(m_desktop, m_kind);
    std::unique_ptr<DataControlPasteboards> m_boards =
        DataControlPasteboards::open(m_socket, m_front, pasteTable({}));
    DeviceKeyPosting m_keys{
        deviceOf(m_socket, m_kind),
        {.isInFront = [this](const PasteTarget& target) { return m_boards->isInFront(target); },
         .pasting = [this](const PasteTarget& target) { m_boards->expectReader(target); }}};
    UnwatchedPrivacyPermissions m_permissions{
        waylandOffers(m_desktop.environment()).reachesPrograms(), noObstacles, {}};
    InputMethodElements m_elements{
        std::make_shared<AtspiFocusedElements>(
            m_desktop.bus(), [this]() -> std::optional<quint32> { return m_front->current().process; }),
        WaylandConnection::open(m_socket), [this] { return !m_front->current().isX11; }};
    TextInserter m_inserter{{*m_boards, m_keys, m_elements, m_permissions, m_scheduler}};
    std::unique_ptr<Field> m_field;
    qint64 m_visibleAfter = -1;
};

class WaylandInsertion : public testing::TestWithParam<std::size_t> {
protected:
    void SetUp() override
    {
        const Program& program = programs().at(GetParam());
        TULVANE_NEEDS(program.kind);
        if (const QString& name = program.command.constFirst();
            QStandardPaths::findExecutable(name).isEmpty())
            GTEST_SKIP() << "not installed: " << qPrintable(name);
        m_world.emplace(program);
    }

    std::optional<World> m_world; ///< made once it is known that its packages are there
};

} // namespace

TEST_P(WaylandInsertion, EveryTextArrivesExactlyAndWhatTheUserHadComesBack)
{
    const QList<PasteboardItem> copied{{{{u"text/html"_qs, "<b>æ</b>"},
                                         {u"image/png"_qs, QByteArray(200000, '\xfe')},
                                         {u"UTF8_STRING"_qs, "æ"}}}};
    std::mt19937 random(static_cast<unsigned>(GetParam()) + 1);
    const Program& program = programs().at(GetParam());
    const int count = soakCount(10, 100);
    // In a terminal one would run the line as a command, so that there are none.
    const LineBreaks lineBreaks = program.isTerminal ? LineBreaks::none : LineBreaks::some;
    std::vector<qint64> times;
    int exact = 0;
    for (int index = 0; index < count; ++index) {
        SCOPED_TRACE("text " + std::to_string(index));
        const QString what = randomText(random, randomLength(random, index, 2000), lineBreaks);
        m_world->field().clear();
        ASSERT_TRUE(m_world->board().replace(copied));
        EXPECT_EQ(m_world->insert(what), program.expected(what));
        times.push_back(m_world->visibleAfter());
        const bool isExact =
            waitUntil([&] { return m_world->field().text() == what; }, std::chrono::milliseconds(10'000));
        exact += isExact ? 1 : 0;
        EXPECT_TRUE(isExact) << difference(m_world->field().text(), what);
        EXPECT_EQ(await(m_world->board().contents()).items, copied);
    }
    std::ranges::sort(times);
    std::printf("%d of %d exact, visible after %lld ms in the median, %lld ms at most\n", exact, count,
                times.at(times.size() / 2), times.back());
}

INSTANTIATE_TEST_SUITE_P(Programs, WaylandInsertion, testing::Range(std::size_t{0}, programs().size()),
                         [](const auto& tested) {
                             const Program& program = programs().at(tested.param);
                             return program.name + (program.kind == Kind::sway ? "OnSway" : "OnKWin");
                         });

} // namespace tulvane::test
