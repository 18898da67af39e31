#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tulvane {

namespace {

const QByteArray page = "<!doctype html><meta charset=utf-8><title>page</title>"
                        "<input id=field value='before' autofocus>";

class BrowserTest : public testing::Test {
protected:
    test::VirtualDesktop m_desktop{{.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                    .sessionBus = test::VirtualDesktop::SessionBus::own,
                                    .openboxKeys = {}}};
    AtspiFocusedElements m_elements{
        m_desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"))};
};

} // namespace

TEST_F(BrowserTest, AFieldOnAPageIsFoundAndNotSettableSoThatTheCallerPastes)
{
    const test::ScratchFolder scratch;
    const QString file = scratch.write(u"page.html"_qs, page);
    m_desktop.start(u"chromium"_qs,
                    {u"--no-sandbox"_qs, u"--force-renderer-accessibility"_qs, u"--no-first-run"_qs,
                     u"--disable-gpu"_qs, u"--user-data-dir="_qs + scratch.file(u"profile"_qs),
                     u"file://"_qs + file});
    std::shared_ptr<FocusedElement> element;
    ASSERT_TRUE(test::waitUntil(
        [&] {
            element = test::await(m_elements.focused());
            return element && test::await(element->value()) == u"before";
        },
        60s));
    EXPECT_EQ(test::await(element->role()), u"AXTextField"_qs);
    EXPECT_FALSE(test::await(element->settable()));
    EXPECT_FALSE(test::await(element->setSelectedText(u"word"_qs)));
    EXPECT_EQ(test::await(element->value()), u"before"_qs);
}

} // namespace tulvane
