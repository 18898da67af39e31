// What is inserted on sway arrives exactly in programs of each toolkit, and the clipboard and the selection
// come back.
#include <insertion/PasteTable.h>
#include <insertion/TextInserter.h>
#include <platform/fake/FakeFocusedElement.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/UnwatchedPrivacyPermissions.h>
#include <platform/linux/session/WaylandOffers.h>
#include <platform/linux/sway/SwayFront.h>
#include <platform/linux/wayland/clipboard/DataControlPasteboards.h>
#include <platform/linux/wayland/keyboard/DeviceKeyPosting.h>
#include <platform/linux/wayland/keyboard/VirtualKeyboard.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/Soak.h>
#include <support/targets/JsonProcess.h>
#include <support/targets/RandomText.h>
#include <support/wayland/WaylandDesktop.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace tulvane::test {

namespace {

struct Program {
    std::string name;
    QStringList command;
    QStringList environment = {};
};

QString script(const char* name)
{
    return sourceFolder() + QStringLiteral("/tests/support/targets/") + QString::fromLatin1(name);
}

const std::vector<Program>& programs()
{
    static const QString python = QStringLiteral("/usr/bin/python3");
    static const std::vector<Program> all{
        {"Gtk3", {python, script("gtk_target.py"), QStringLiteral("view")}},
        {"Gtk4", {python, script("gtk4_target.py")}},
        {"Qt6",
         {QCoreApplication::applicationDirPath() + QStringLiteral("/tulvane_qt_target"),
          QStringLiteral("text")},
         {QStringLiteral("QT_QPA_PLATFORM=wayland")}},
        {"X11",
         {python, script("gtk_target.py"), QStringLiteral("view")},
         {QStringLiteral("GDK_BACKEND=x11")}}};
    return all;
}

KeyObstacles noObstacles()
{
    return {};
}

/// The program's way to a field on sway, and the field.
class SwayWorld final {
public:
    explicit SwayWorld(const Program& program)
    {
        QStringList command =
            QStringList{QStringLiteral("/usr/bin/env")} + program.environment + program.command;
        QProcess& process = m_desktop.start(command.takeFirst(), command);
        m_field = std::make_unique<JsonProcess>(process, '\n');
        EXPECT_TRUE(waitUntil([this] { return m_field->count(QStringLiteral("ready")) > 0; }));
        EXPECT_TRUE(waitUntil([this] { return m_front->current().process != 0; }));
    }
    QString text()
    {
        return m_field->ask({{QStringLiteral("do"), QStringLiteral("report")}})[QStringLiteral("text")]
            .toString();
    }
    void clear() { (void)m_field->ask({{QStringLiteral("do"), QStringLiteral("clear")}}); }
    InsertionResult insert(const QString& what)
    {
        m_visibleAfter = -1;
        InsertionResult result = InsertionResult::copiedToClipboard;
        bool isDone = false;
        const auto task = [](SwayWorld& world, QString inserted, InsertionResult& into,
                             bool& done) -> QCoro::Task<> {
            into = co_await world.m_inserter.insert(inserted, InsertionMethod::paste, true);
            done = true;
        }(*this, what, result, isDone);
        const qsizetype before = m_field->count(QStringLiteral("changed"));
        QElapsedTimer clock;
        clock.start();
        EXPECT_TRUE(waitUntil([&] {
            if (m_visibleAfter < 0 && m_field->count(QStringLiteral("changed")) > before)
                m_visibleAfter = clock.elapsed();
            return isDone;
        }));
        return result;
    }

    Pasteboard& board() { return m_boards->general(); }
    /// Milliseconds from the call to the text in the field.
    [[nodiscard]] qint64 visibleAfter() const { return m_visibleAfter; }

private:
    WaylandDesktop m_desktop{WaylandDesktop::Kind::sway, {.x11 = true}};
    QByteArray m_socket = WaylandConnection::socketOf(m_desktop.environment());
    EventLoopScheduler m_scheduler;
    std::shared_ptr<SwayFront> m_front = std::make_shared<SwayFront>(std::shared_ptr<SwayConnection>(
        SwayConnection::open(SwayConnection::socketOf(m_desktop.environment()))));
    std::unique_ptr<DataControlPasteboards> m_boards =
        DataControlPasteboards::open(m_socket, m_front, pasteTable({}));
    DeviceKeyPosting m_keys{
        VirtualKeyboard::make(WaylandConnection::open(m_socket)),
        {.isInFront = [this](const PasteTarget& target) { return m_boards->isInFront(target); },
         .pasting = [this](const PasteTarget& target) { m_boards->expectReader(target); }}};
    UnwatchedPrivacyPermissions m_permissions{
        waylandOffers(m_desktop.environment()).reachesPrograms(), noObstacles, {}};
    FakeFocusedElements m_elements;
    TextInserter m_inserter{{*m_boards, m_keys, m_elements, m_permissions, m_scheduler}};
    std::unique_ptr<JsonProcess> m_field;
    qint64 m_visibleAfter = -1;
};

class SwayInsertion : public testing::TestWithParam<std::size_t> {
protected:
    void SetUp() override
    {
        TULVANE_NEEDS(WaylandDesktop::Kind::sway);
        m_world.emplace(programs().at(GetParam()));
    }

    std::optional<SwayWorld> m_world; ///< made once it is known that its packages are there
};

} // namespace

TEST_P(SwayInsertion, EveryTextArrivesExactlyAndWhatTheUserHadComesBack)
{
    const QList<PasteboardItem> copied{{{{u"text/html"_qs, "<b>æ</b>"},
                                         {u"image/png"_qs, QByteArray(200000, '\xfe')},
                                         {u"UTF8_STRING"_qs, "æ"}}}};
    std::mt19937 random(static_cast<unsigned>(GetParam()) + 1);
    const int count = soakCount(10, 100);
    std::vector<qint64> times;
    for (int index = 0; index < count && !HasFailure(); ++index) {
        SCOPED_TRACE("text " + std::to_string(index));
        const QString what = randomText(random, randomLength(random, index, 2000), LineBreaks::some);
        m_world->clear();
        ASSERT_TRUE(m_world->board().replace(copied));
        EXPECT_EQ(m_world->insert(what), InsertionResult::pasted);
        times.push_back(m_world->visibleAfter());
        EXPECT_TRUE(waitUntil([&] { return m_world->text() == what; }, std::chrono::milliseconds(2000)))
            << m_world->text().size() << " of " << what.size();
        EXPECT_EQ(await(m_world->board().contents()).items, copied);
    }
    std::ranges::sort(times);
    RecordProperty("medianMilliseconds", static_cast<int>(times.at(times.size() / 2)));
    RecordProperty("longestMilliseconds", static_cast<int>(times.back()));
}

INSTANTIATE_TEST_SUITE_P(Programs, SwayInsertion, testing::Range(std::size_t{0}, std::size_t{4}),
                         [](const auto& tested) { return programs().at(tested.param).name; });

} // namespace tulvane::test
