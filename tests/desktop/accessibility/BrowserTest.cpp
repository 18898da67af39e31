#include <insertion/TextInserter.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/session/X11Text.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <QCoroTask>
#include <QFile>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tulvane {

namespace {

/// The window's title tells when the field has the focus, and what is in it.
const QByteArray page = "<!doctype html><meta charset=utf-8><title>page</title>"
                        "<input id=field value='før ' onfocus='setTimeout(tell)' oninput='tell()'>"
                        "<script>function tell() { document.title = 'field: ' + field.value }\n"
                        "field.focus(); field.setSelectionRange(9, 9)</script>";

class BrowserTest : public testing::Test {
protected:
    bool titleBecomes(const QString& start)
    {
        // The window manager may have no active window yet, or one that goes at that moment.
        const QString ask = u"xdotool getactivewindow getwindowname || true"_qs;
        return test::waitUntil(
            [&] { return m_desktop.run(u"sh"_qs, {u"-c"_qs, ask}).startsWith(start.toUtf8()); }, 60s);
    }

    test::VirtualDesktop m_desktop{{.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                    .sessionBus = test::VirtualDesktop::SessionBus::own,
                                    .openboxKeys = {}}};
    EventLoopScheduler m_scheduler;
    std::unique_ptr<X11Text> m_text = X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
    AtspiFocusedElements m_elements{m_desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")),
                                    [this] { return m_text->frontProcess(); }};
    FakePrivacyPermissions m_permissions;
    TextInserter m_inserter{{m_text->pasteboards(), m_text->keys(), m_elements, m_permissions, m_scheduler}};
};

} // namespace

TEST_F(BrowserTest, AFieldOnAPageIsPastedInto)
{
    QFile file(m_desktop.home() + u"/page.html");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(page) == page.size());
    file.close();
    m_desktop.start(u"env"_qs, {u"ACCESSIBILITY_ENABLED=1"_qs, u"chromium"_qs, u"--no-sandbox"_qs,
                                u"--force-renderer-accessibility"_qs, u"--no-first-run"_qs,
                                u"--disable-gpu"_qs, u"--user-data-dir="_qs + m_desktop.home() + u"/profile",
                                u"file://"_qs + file.fileName()});
    ASSERT_TRUE(titleBecomes(u"field: før"_qs));
    // Its fields cannot be written over the accessibility bus, whether it says that they have the focus or
    // not.
    const auto element = test::await(m_elements.focused());
    EXPECT_FALSE(element && test::await(element->settable()));
    EXPECT_EQ(
        QCoro::waitFor(m_inserter.insert(u"«ord» 😀"_qs, InsertionMethod::accessibilityThenPaste, true)),
        InsertionResult::pasted);
    EXPECT_TRUE(titleBecomes(u"field: før «ord» 😀 - "_qs));
}

} // namespace tulvane
