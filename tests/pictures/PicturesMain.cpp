// Draws pages of the program into PNG files, for looking at them:
//   tulvane_pictures FOLDER [--language nb|en] [--appearance light|dark] [--state empty|full]
//                    [--size 1020x680] [--tall] [--click CONTROL] PAGE...
// PAGE is a page of the main window. --tall makes the window as high as the page. --click presses the control
// of that name first. The state "failed" has a dictation that could not be transcribed, "left" one that could
// not be inserted, "loading" a model that loads. QT_SCALE_FACTOR scales.

#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/windows/SettingsWindowController.h>

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>

#include <cstdio>

namespace {

using namespace tulvane;

struct Wish {
    QDir folder;
    AppLanguage language = AppLanguage::english;
    Appearance appearance = Appearance::light;
    QString state;
    bool isTall = false;
    QString click;
    QSize size;
};

QString nameOf(const QString& page, const Wish& wish)
{
    return QStringLiteral("%1-%2-%3-%4.png")
        .arg(page, rawValue(wish.language),
             wish.appearance == Appearance::dark ? QStringLiteral("dark") : QStringLiteral("light"),
             wish.click.isEmpty() ? wish.state : wish.state + u'-' + wish.click);
}

/// The height that the page would need to be seen whole.
int tallness(const QQuickView& window)
{
    int tallest = window.height();
    for (const QQuickItem* item : window.rootObject()->findChildren<QQuickItem*>()) {
        if (item->inherits("QQuickFlickable"))
            tallest = std::max(tallest, qRound(item->property("contentHeight").toReal()));
    }
    return tallest;
}

/// Of the PNG writer: the most work for the fewest bytes.
constexpr int smallest = 0;

bool draw(test::UiWorld& world, const QString& page, const Wish& wish)
{
    const auto tab = fromRawValue<SettingsTab>(page);
    if (!tab)
        return false;
    world.ui.showPage(*tab);
    QQuickView* const window = world.ui.settingsWindow().window();
    if (!wish.size.isEmpty())
        window->resize(wish.size);
    test::UiWorld::settle();
    const int height = window->height();
    if (wish.isTall) {
        window->resize(window->width(), tallness(*window));
        test::UiWorld::settle();
    }
    if (!wish.click.isEmpty())
        test::WindowProbe(*window).click(wish.click);
    const QString file = wish.folder.filePath(nameOf(page, wish));
    const bool isWritten =
        window->grabWindow().convertToFormat(QImage::Format_RGB888).save(file, "PNG", smallest);
    window->resize(window->width(), height);
    std::printf("%s\n", qPrintable(file));
    return isWritten;
}

/// Brings the program into the state that the pictures show.
void prepare(test::UiWorld& world, const QString& state)
{
    if (state == u"empty")
        return;
    world.fill();
    if (state == u"failed") {
        world.engine.transcribeError = EngineError::transcriptionFailed(-6);
        world.controller.start();
        static_cast<void>(world.input.push(std::vector<float>(32000, 0.5F)));
        world.controller.stop();
    } else if (state == u"left") {
        world.privacy.accessibilityGranted = false;
        world.dictate(QStringLiteral("Dette skulle stått et annet sted."));
    } else if (state == u"loading") {
        world.engine.isPrompt = false;
        world.engine.model.reset();
        world.session.preloadModel();
        world.engine.step(); // which model is loaded; the next step would be the load's end
    }
    test::UiWorld::settle();
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{QStringLiteral("language"), {}, QStringLiteral("code"), QStringLiteral("en")},
                       {QStringLiteral("appearance"), {}, QStringLiteral("name"), QStringLiteral("light")},
                       {QStringLiteral("state"), {}, QStringLiteral("name"), QStringLiteral("full")},
                       {QStringLiteral("size"), {}, QStringLiteral("WxH"), QStringLiteral("1020x680")},
                       {QStringLiteral("click"), {}, QStringLiteral("control")},
                       {QStringLiteral("tall"), {}}});
    parser.process(app);
    QStringList pages = parser.positionalArguments();
    if (pages.isEmpty())
        qFatal("Where to?");
    Wish wish;
    wish.folder = QDir(pages.takeFirst());
    QDir().mkpath(wish.folder.path());
    wish.language = fromRawValue<AppLanguage>(parser.value(QStringLiteral("language"))).value();
    wish.appearance =
        parser.value(QStringLiteral("appearance")) == u"dark" ? Appearance::dark : Appearance::light;
    wish.state = parser.value(QStringLiteral("state"));
    wish.click = parser.value(QStringLiteral("click"));
    wish.isTall = parser.isSet(QStringLiteral("tall"));
    const QStringList size = parser.value(QStringLiteral("size")).split(u'x');
    if (size.size() == 2)
        wish.size = QSize(size.at(0).toInt(), size.at(1).toInt());

    test::UiWorld world(wish.language);
    world.presentation.setSystemAppearance(wish.appearance);
    world.presentation.setReducedMotion(true);
    prepare(world, wish.state);
    bool isGood = true;
    for (const QString& page : pages)
        isGood = draw(world, page, wish) && isGood;
    return isGood ? 0 : 1;
}
