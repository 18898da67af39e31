// Draws pages of the program into PNG files, for looking at them:
//   tulvane_pictures FOLDER [--language nb|en] [--appearance light|dark] [--state empty|full]
//                    [--size 1020x680] [--tall] PAGE...
// PAGE is a page of the main window, or the pill: pill-idle, pill-listening, pill-transcribing,
// pill-inserting, pill-notice, pill-long-notice, pill-error, pill-uncut (without a compositor). --tall makes
// the window as high as the page. QT_SCALE_FACTOR scales.

#include <base/Translate.h>
#include <support/ui/UiWorld.h>
#include <ui/indicator/HUDController.h>
#include <ui/look/InterfaceLanguage.h>
#include <ui/windows/SettingsWindowController.h>

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QQuickItem>
#include <QQuickView>

#include <cstdio>

namespace {

using namespace tulvane;

struct Wish {
    QDir folder;
    AppLanguage language = AppLanguage::english;
    Appearance appearance = Appearance::light;
    bool isFull = true;
    bool isTall = false;
    QSize size;
};

QString nameOf(const QString& page, const Wish& wish)
{
    return QStringLiteral("%1-%2-%3-%4.png")
        .arg(page, rawValue(wish.language),
             wish.appearance == Appearance::dark ? QStringLiteral("dark") : QStringLiteral("light"),
             wish.isFull ? QStringLiteral("full") : QStringLiteral("empty"));
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

Phase phaseOf(const QString& page)
{
    if (page == u"pill-listening" || page == u"pill-uncut")
        return {Phase::Kind::recording, {}};
    if (page == u"pill-transcribing")
        return {Phase::Kind::transcribing, {}};
    if (page == u"pill-inserting")
        return {Phase::Kind::inserting, {}};
    if (page == u"pill-notice")
        return Phase::notice(translate("Copied to clipboard"));
    if (page == u"pill-long-notice")
        return Phase::notice(translate("Microphone changed – recording cancelled"));
    if (page == u"pill-error")
        return Phase::error(translate("No microphone is available."));
    return {};
}

/// What other programs may have there: text-like stripes over a plain ground.
QImage someDesktop(const QSize& size, qreal scale, bool isDark)
{
    QImage image((QSizeF(size) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(isDark ? QColor(0x1d, 0x22, 0x2b) : QColor(0xf2, 0xf3, 0xf5));
    QPainter painter(&image);
    for (int y = 14; y < size.height(); y += 18)
        painter.fillRect(QRect(20, y, size.width() - 40 - (y * 37) % 150, 5),
                         isDark ? QColor(0x55, 0x5f, 0x6e) : QColor(0xc3, 0xc9, 0xd2));
    return image;
}

bool drawPill(test::UiWorld& world, const QString& page, const Wish& wish)
{
    HUDController& pill = world.ui.indicator();
    pill.setPhase(phaseOf(page));
    pill.setLevel(0.6F);
    pill.show();
    if (page == u"pill-uncut") {
        world.panel->setBlended(false);
        pill.show();
    }
    test::UiWorld::settle();
    const QImage picture = test::pictureOf(*pill.panel()->rootObject());
    constexpr QSize around(60, 40);
    QImage ground = someDesktop(HUDController::contentSize + around, picture.devicePixelRatio(),
                                wish.appearance == Appearance::dark);
    QPainter(&ground).drawImage(QPoint(around.width(), around.height()) / 2, picture);
    const QString file = wish.folder.filePath(nameOf(page, wish));
    std::printf("%s\n", qPrintable(file));
    pill.hide(false);
    world.panel->setBlended(true);
    return ground.save(file);
}

bool draw(test::UiWorld& world, const QString& page, const Wish& wish)
{
    if (page.startsWith(u"pill-"))
        return drawPill(world, page, wish);
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
    const QString file = wish.folder.filePath(nameOf(page, wish));
    const bool isWritten = window->grabWindow().save(file);
    window->resize(window->width(), height);
    std::printf("%s\n", qPrintable(file));
    return isWritten;
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
    wish.isFull = parser.value(QStringLiteral("state")) == u"full";
    wish.isTall = parser.isSet(QStringLiteral("tall"));
    const QStringList size = parser.value(QStringLiteral("size")).split(u'x');
    if (size.size() == 2)
        wish.size = QSize(size.at(0).toInt(), size.at(1).toInt());

    test::UiWorld world;
    installInterfaceLanguage(wish.language);
    world.settings.setAppLanguage(wish.language);
    world.presentation.setSystemAppearance(wish.appearance);
    world.presentation.setReducedMotion(true);
    if (wish.isFull)
        world.fill();
    bool isGood = true;
    for (const QString& page : pages)
        isGood = draw(world, page, wish) && isGood;
    return isGood ? 0 : 1;
}
