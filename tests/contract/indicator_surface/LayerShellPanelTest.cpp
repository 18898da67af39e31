// The indicator's own surface on compositors with layers, looked at in pictures of the whole screen.
#include <platform/linux/wayland/windows/LayerShellPanel.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/targets/JsonProcess.h>
#include <support/wayland/WaylandDesktop.h>

#include <QDir>
#include <QWindow>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

constexpr QSize pictureSize{200, 60};
constexpr int fromLowerEdge = 44;

class LayerShellPanelTest : public testing::TestWithParam<WaylandDesktop::Kind> {
protected:
    void SetUp() override
    {
        TULVANE_NEEDS(GetParam());
        m_desktop = std::make_unique<WaylandDesktop>(GetParam());
        m_connection = WaylandConnection::open(WaylandConnection::socketOf(m_desktop->environment()));
        m_panel = LayerShellPanel::make(m_connection);
        ASSERT_TRUE(m_panel);
    }
    static QImage picture(QColor colour)
    {
        QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(colour);
        return image;
    }
    /// The colour of the screen in the middle of where the picture is shown.
    QColor seen()
    {
        const QString file = QDir(m_desktop->home()).filePath(QStringLiteral("screen.png"));
        m_desktop->picture(file);
        const QImage screen(file);
        return screen.pixelColor(screen.width() / 2,
                                 screen.height() - fromLowerEdge - pictureSize.height() / 2);
    }
    bool waitForColour(QColor colour)
    {
        return waitUntil([&] {
            const QColor now = seen();
            return std::abs(now.red() - colour.red()) < 8 && std::abs(now.green() - colour.green()) < 8 &&
                   std::abs(now.blue() - colour.blue()) < 8;
        });
    }
    JsonProcess startField()
    {
        return {m_desktop->start(QStringLiteral("/usr/bin/python3"),
                                 {sourceFolder() + QStringLiteral("/tests/support/targets/gtk_target.py"),
                                  QStringLiteral("view")}),
                '\n'};
    }

    std::unique_ptr<WaylandDesktop> m_desktop;
    std::shared_ptr<WaylandConnection> m_connection;
    std::unique_ptr<LayerShellPanel> m_panel;
};

} // namespace

TEST_P(LayerShellPanelTest, APictureIsSeenAtItsPlaceAndTheNextInItsStead)
{
    m_panel->show(picture(Qt::red), fromLowerEdge);
    EXPECT_TRUE(waitForColour(Qt::red)) << qPrintable(seen().name());
    m_panel->show(picture(Qt::blue), fromLowerEdge);
    EXPECT_TRUE(waitForColour(Qt::blue)) << qPrintable(seen().name());
    m_panel->hide();
    EXPECT_TRUE(waitUntil([&] { return seen() != QColor(Qt::blue); }));
    m_panel->show(picture(Qt::red), fromLowerEdge);
    EXPECT_TRUE(waitForColour(Qt::red)) << qPrintable(seen().name());
}

TEST_P(LayerShellPanelTest, ItIsBlendedAndFades)
{
    EXPECT_TRUE(m_panel->isBlended());
    m_panel->setOpacity(0);
    const QColor ground = seen();
    m_panel->show(picture(Qt::red), fromLowerEdge);
    EXPECT_TRUE(waitForColour(ground));
    m_panel->setOpacity(0.5);
    const QColor half((ground.red() + 255) / 2, ground.green() / 2, ground.blue() / 2);
    EXPECT_TRUE(waitForColour(half)) << qPrintable(seen().name());
    m_panel->setOpacity(1);
    EXPECT_TRUE(waitForColour(Qt::red)) << qPrintable(seen().name());
}

TEST_P(LayerShellPanelTest, TheProgramInFrontKeepsTheFocusAndTheKeys)
{
    JsonProcess field = startField();
    ASSERT_TRUE(waitUntil([&] { return field.count(QStringLiteral("ready")) > 0; }));
    m_panel->show(picture(Qt::red), fromLowerEdge);
    EXPECT_TRUE(waitForColour(Qt::red)) << qPrintable(seen().name());
    constexpr int aKey = 30;
    m_desktop->press({aKey});
    const auto report = [&] { return field.ask({{QStringLiteral("do"), QStringLiteral("report")}}); };
    EXPECT_TRUE(waitUntil([&] { return report()[QStringLiteral("text")] == QStringLiteral("a"); }));
    EXPECT_EQ(report()[QStringLiteral("focus")], QStringLiteral("field"));
}

TEST_P(LayerShellPanelTest, EverythingMayBeAskedAtAnyTimeAndAgain)
{
    QWindow window;
    m_panel->prepare(window);
    EXPECT_EQ(m_panel->surface(), m_panel.get());
    EXPECT_GE(m_panel->scale(), 1);
    m_panel->hide();
    for (const double opacity : {0.0, 0.3, 1.0}) {
        m_panel->setOpacity(opacity);
        m_panel->show(picture(Qt::red), fromLowerEdge);
        m_panel->show(picture(Qt::blue), fromLowerEdge);
        m_panel->hide();
    }
    m_connection->catchUp();
    EXPECT_FALSE(m_connection->isBroken());
}

TEST_P(LayerShellPanelTest, ACompositorThatGoesTakesNothingWithIt)
{
    m_panel->show(picture(Qt::red), fromLowerEdge);
    bool isClosed = false;
    QObject::connect(m_connection.get(), &WaylandConnection::closed, m_connection.get(),
                     [&] { isClosed = true; });
    m_desktop->stop();
    EXPECT_TRUE(waitUntil([&] { return isClosed; }));
    m_panel->show(picture(Qt::blue), fromLowerEdge);
    m_panel->hide();
}

INSTANTIATE_TEST_SUITE_P(Compositors, LayerShellPanelTest,
                         testing::Values(WaylandDesktop::Kind::sway, WaylandDesktop::Kind::kwin),
                         [](const auto& tested) {
                             return std::string(tested.param == WaylandDesktop::Kind::sway ? "Sway" : "KWin");
                         });

} // namespace tulvane::test
