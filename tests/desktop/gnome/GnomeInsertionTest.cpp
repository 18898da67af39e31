// What is inserted on GNOME arrives exactly in programs of each toolkit, pasted and committed, and what the
// user had copied comes back.
#include "GnomeFixture.h"

#include <base/async/TaskFuture.h>
#include <insertion/PasteTable.h>
#include <insertion/TextInserter.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/gnome/IBusElements.h>
#include <platform/linux/gnome/MutterRemoteDesktop.h>
#include <platform/linux/session/desktop/GnomeText.h>
#include <support/Soak.h>
#include <support/targets/JsonProcess.h>
#include <support/targets/RandomText.h>

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>

namespace tulvane::test {

namespace {

struct Program {
    std::string name;
    QStringList command;
    LineBreaks lineBreaks = LineBreaks::some;
};

QString script(const char* name)
{
    return sourceFolder() + QStringLiteral("/tests/support/targets/") + QString::fromLatin1(name);
}

const std::vector<Program>& programs()
{
    static const QString python = QStringLiteral("/usr/bin/python3");
    static const QString qtTarget =
        QCoreApplication::applicationDirPath() + QStringLiteral("/tulvane_qt_target");
    static const std::vector<Program> all{
        {"Gtk3", {python, script("gtk_target.py"), QStringLiteral("view")}},
        {"Gtk4", {python, script("gtk4_target.py")}},
        {"Qt6",
         {QStringLiteral("/usr/bin/env"), QStringLiteral("QT_QPA_PLATFORM=wayland"),
          QStringLiteral("QT_IM_MODULE=ibus"), qtTarget, QStringLiteral("text")}},
        {"X11",
         {QStringLiteral("/usr/bin/env"), QStringLiteral("GDK_BACKEND=x11"), python, script("gtk_target.py"),
          QStringLiteral("view")}},
        // The user's own terminal shows nothing over accessibility: it is one of which nothing is known.
        {"Terminal", {QStringLiteral("foot"), python, script("terminal_reader.py")}, LineBreaks::none}};
    return all;
}

/// What stands in a program's field.
class Field {
public:
    Field(WaylandDesktop& desktop, const Program& program)
    {
        QStringList command = program.command;
        if (program.name == "Terminal")
            command.append(m_file = desktop.home() + QStringLiteral("/terminal"));
        if (!m_file.isEmpty())
            QFile::remove(m_file);
        m_isSilent = program.name == "Qt6";
        m_process = &desktop.start(command.takeFirst(), command);
        if (m_file.isEmpty())
            m_requests = std::make_unique<JsonProcess>(*m_process, '\n');
        EXPECT_TRUE(waitUntil([this] {
            return m_requests ? m_requests->count(QStringLiteral("ready")) > 0 : QFile::exists(m_file);
        }));
    }
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;
    ~Field()
    {
        m_process->terminate();
        m_process->waitForFinished();
    }
    [[nodiscard]] QString text()
    {
        if (m_requests)
            return m_requests->ask({{QStringLiteral("do"), QStringLiteral("report")}})[QStringLiteral("text")]
                .toString();
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll().sliced(m_past)) : QString();
    }
    /// Whether something has come since the last `clear()`, as soon as that is known.
    [[nodiscard]] bool hasChanged()
    {
        if (!m_requests)
            return QFile(m_file).size() > m_past;
        // Qt's says so only when it is asked.
        return m_requests->count(QStringLiteral("changed")) > m_past || (m_isSilent && !text().isEmpty());
    }
    void clear()
    {
        if (m_requests)
            (void)m_requests->ask({{QStringLiteral("do"), QStringLiteral("clear")}});
        m_past = m_requests ? m_requests->count(QStringLiteral("changed")) : QFile(m_file).size();
    }

private:
    QProcess* m_process = nullptr;
    std::unique_ptr<JsonProcess> m_requests;
    QString m_file;
    bool m_isSilent = false;
    qsizetype m_past = 0;
};

using Tested = std::tuple<std::size_t, InsertionMethod>;

class GnomeInsertion : public GnomeTest, public testing::WithParamInterface<Tested> {
protected:
    void SetUp() override
    {
        GnomeTest::SetUp();
        if (!desktop)
            return;
        qputenv("XAUTHORITY", desktop->variable(QStringLiteral("XAUTHORITY")).toLocal8Bit());
        qputenv("DBUS_SESSION_BUS_ADDRESS", desktop->bus().toLocal8Bit());
        m_text = GnomeText::open({.environment = desktop->environment(),
                                  .sessionBusAddress = desktop->bus(),
                                  .rules = pasteTable({}),
                                  .remoteDesktop = std::make_shared<MutterRemoteDesktop>(desktop->bus())},
                                 m_scheduler);
        ASSERT_NE(m_text, nullptr);
        m_elements = std::make_unique<IBusElements>(
            std::make_shared<AtspiFocusedElements>(
                desktop->bus(),
                [this]() -> std::optional<quint32> { return m_text->front().current().process; }),
            std::make_shared<IBusCommit>(desktop->environment()));
        m_inserter = std::make_unique<TextInserter>(
            InsertionPorts{m_text->pasteboards(), m_text->keys(), *m_elements, m_permissions, m_scheduler});
        m_field = std::make_unique<Field>(*desktop, program());
        // The terminal alone says nothing of itself.
        ASSERT_TRUE(waitUntil(
            [this] { return program().name == "Terminal" || m_text->front().current().process != 0; }));
        runEventLoopFor(std::chrono::milliseconds(500));
    }
    static const Program& program() { return programs().at(std::get<0>(GetParam())); }
    static InsertionMethod method() { return std::get<1>(GetParam()); }

    InsertionResult insert(const QString& what)
    {
        m_visibleAfter = -1;
        QElapsedTimer clock;
        clock.start();
        const QFuture<InsertionResult> task = futureOf(m_inserter->insert(what, method(), true));
        EXPECT_TRUE(waitUntil([&] {
            if (m_visibleAfter < 0 && m_field->hasChanged())
                m_visibleAfter = clock.elapsed();
            return task.isFinished();
        }));
        return task.isFinished() ? task.result() : InsertionResult::copiedToClipboard;
    }

    EventLoopScheduler m_scheduler;
    std::shared_ptr<GnomeText> m_text;
    std::unique_ptr<IBusElements> m_elements;
    FakePrivacyPermissions m_permissions;
    std::unique_ptr<TextInserter> m_inserter;
    std::unique_ptr<Field> m_field;
    qint64 m_visibleAfter = -1; ///< milliseconds from the call to the text in the field
};

} // namespace

TEST_P(GnomeInsertion, EveryTextArrivesExactlyAndWhatTheUserHadComesBack)
{
    const QList<PasteboardItem> copied{{{{QStringLiteral("text/html"), "<b>æ</b>"},
                                         {QStringLiteral("image/png"), QByteArray(200000, '\xfe')},
                                         {QStringLiteral("UTF8_STRING"), "æ"}}}};
    std::mt19937 random(static_cast<unsigned>(std::get<0>(GetParam())) + 1);
    const int count = soakCount(8, 100);
    std::vector<qint64> times;
    int exact = 0;
    for (int index = 0; index < count; ++index) {
        SCOPED_TRACE("text " + std::to_string(index));
        const QString what = randomText(random, randomLength(random, index, 2000), program().lineBreaks);
        m_field->clear();
        ASSERT_TRUE(m_text->pasteboards().general().replace(copied));
        EXPECT_NE(insert(what), InsertionResult::copiedToClipboard);
        times.push_back(m_visibleAfter);
        const bool isExact =
            waitUntil([&] { return m_field->text() == what; }, std::chrono::milliseconds(2000));
        exact += isExact ? 1 : 0;
        EXPECT_TRUE(isExact) << m_field->text().size() << " of " << what.size();
        EXPECT_EQ(await(m_text->pasteboards().general().contents()).items, copied);
    }
    std::ranges::sort(times);
    std::printf("%d of %d exact, visible after %lld ms in the median, %lld ms at most\n", exact, count,
                times.at(times.size() / 2), times.back());
}

INSTANTIATE_TEST_SUITE_P(Programs, GnomeInsertion,
                         testing::Combine(testing::Range(std::size_t{0}, std::size_t{5}),
                                          testing::Values(InsertionMethod::paste,
                                                          InsertionMethod::accessibilityThenPaste)),
                         [](const auto& tested) {
                             const bool isPaste = std::get<1>(tested.param) == InsertionMethod::paste;
                             return programs().at(std::get<0>(tested.param)).name +
                                    (isPaste ? "Pasted" : "Committed");
                         });

} // namespace tulvane::test
