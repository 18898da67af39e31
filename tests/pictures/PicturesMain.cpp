// Draws pages of the program into PNG files, for looking at them:
//   tulvane_pictures FOLDER [--language nb|en] [--appearance light|dark] [--state empty|half|full]
//                    [--size 1020x680] [--tall] [--click CONTROL] [--as NAME] PAGE...
// PAGE is a page of the main window, "onboarding", or the indicator: indicator-idle, indicator-listening,
// indicator-minute and indicator-ending (with time), indicator-transcribing, indicator-inserting,
// indicator-notice, indicator-long-notice, indicator-error, indicator-uncut (without a compositor). --tall
// makes the window as high as the page. --click presses the control of that name first. The state "half" has
// a setup under way in which much is wrong, "failed" a dictation that could not be transcribed, "left" one
// that could not be inserted, "loading" a model that loads, "remnants" downloads that have left something,
// "downloading", "verifying" and "refused" what may become of one, "listening" a dictation under way,
// "tested" a microphone that was heard, "mute" a computer without one, "aside" settings that were put aside,
// "bare" a desktop without a tray. --as names the file's last part. QT_SCALE_FACTOR scales.

#include <base/Translate.h>
#include <platform/linux/keys/KeyText.h>
#include <ports/KeyModifiers.h>
#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/indicator/HUDController.h>
#include <ui/windows/OnboardingWindowController.h>
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
    QString state;
    bool isTall = false;
    QString click;
    QString as;
    QSize size;
};

QString nameOf(const QString& page, const Wish& wish)
{
    return QStringLiteral("%1-%2-%3-%4.png")
        .arg(page, rawValue(wish.language),
             wish.appearance == Appearance::dark ? QStringLiteral("dark") : QStringLiteral("light"),
             !wish.as.isEmpty()     ? wish.as
             : wish.click.isEmpty() ? wish.state
                                    : wish.state + u'-' + wish.click);
}

/// The height that the page would need to be seen whole, by what scrolls most of the window.
int tallness(const QQuickView& window, int least)
{
    const QQuickItem* page = nullptr;
    for (const QQuickItem* item : window.rootObject()->findChildren<QQuickItem*>()) {
        // Not of a page that has gone, and waits for its end.
        if (item->window() != nullptr && item->inherits("QQuickFlickable") &&
            (page == nullptr || item->height() > page->height()))
            page = item;
    }
    if (page == nullptr)
        return least;
    return std::max(least, window.height() - qRound(page->height()) +
                               qRound(page->property("contentHeight").toReal()));
}

/// Of the PNG writer: the most work for the fewest bytes.
constexpr int smallest = 0;

Phase phaseOf(const QString& page)
{
    if (page == u"indicator-listening" || page == u"indicator-uncut" || page == u"indicator-minute" ||
        page == u"indicator-ending")
        return {Phase::Kind::recording, {}};
    if (page == u"indicator-transcribing")
        return {Phase::Kind::transcribing, {}};
    if (page == u"indicator-inserting")
        return {Phase::Kind::inserting, {}};
    if (page == u"indicator-notice")
        return Phase::notice(translate("Copied to clipboard"));
    if (page == u"indicator-long-notice")
        return Phase::notice(translate("Microphone changed – recording cancelled"));
    if (page == u"indicator-error")
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

bool drawIndicator(test::UiWorld& world, const QString& page, const Wish& wish)
{
    HUDController& indicator = world.ui.indicator();
    indicator.setPhase(phaseOf(page));
    if (page == u"indicator-minute")
        world.scheduler.advance(std::chrono::seconds(83));
    if (page == u"indicator-ending")
        world.scheduler.advance(std::chrono::seconds(293));
    indicator.setLevel(0.6F);
    indicator.show();
    if (page == u"indicator-uncut") {
        world.panel->setBlended(false);
        indicator.show();
    }
    test::UiWorld::settle();
    const QImage picture = test::pictureOf(*indicator.panel()->rootObject());
    constexpr QSize around(60, 40);
    QImage ground = someDesktop(HUDController::contentSize + around, picture.devicePixelRatio(),
                                wish.appearance == Appearance::dark);
    QPainter(&ground).drawImage(QPoint(around.width(), around.height()) / 2, picture);
    const QString file = wish.folder.filePath(nameOf(page, wish));
    std::printf("%s\n", qPrintable(file));
    indicator.hide(false);
    indicator.setPhase({});
    world.panel->setBlended(true);
    return ground.save(file);
}

/// Shows the page; null when there is none of that name.
QQuickView* show(test::UiWorld& world, const QString& page)
{
    if (page == u"onboarding") {
        world.ui.showOnboarding();
        return world.ui.onboardingWindow().window();
    }
    const auto tab = fromRawValue<SettingsTab>(page);
    if (!tab)
        return nullptr;
    world.ui.showPage(*tab);
    return world.ui.settingsWindow().window();
}

/// A user who has just installed the program, on a desktop that asks before it permits anything.
void beginAnew(test::UiWorld& world)
{
    world.privacy.microphoneAccess = MicrophoneAccess::notDetermined;
    world.privacy.accessibilityGranted = false;
    world.privacy.inputMonitoringGranted = false;
    world.permissions.refresh();
    world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
}

/// The microphone is there, the model on its way; another program holds the key combination, and the single
/// key may not be watched.
void setUpHalf(test::UiWorld& world)
{
    constexpr KeyCombination wanted{virtualKeys::space, carbon::option};
    beginAnew(world);
    world.privacy.microphoneAccess = MicrophoneAccess::authorized;
    world.globalHotkeys.takeElsewhere(wanted);
    world.shortcuts.setShortcut(Shortcut::fromCombination(wanted), ShortcutName::dictate());
    world.settings.modifierHotkey.set(ModifierHotkey::rightOption);
    world.permissions.refresh();
    const WhisperModel& model = WhisperModel::fallback();
    world.models.download(model);
    test::UiWorld::settle();
    world.transfers.tellProgress(world.transfers.lastTask(), model.approximateSizeBytes * 43 / 100,
                                 model.approximateSizeBytes);
}

/// The download is there; what becomes of its check is told by the event loop, later.
void arrive(test::UiWorld& world)
{
    world.transfers.tellFinished(world.transfers.lastTask(), 200, "not quite a model");
}

bool draw(test::UiWorld& world, const QString& page, const Wish& wish)
{
    if (page.startsWith(u"indicator-"))
        return drawIndicator(world, page, wish);
    QQuickView* const window = show(world, page);
    if (!window)
        return false;
    // Of a screen that is smaller than the window would be.
    if (wish.size.isValid())
        window->setMinimumSize(window->minimumSize().boundedTo(wish.size));
    if (!wish.size.isEmpty())
        window->resize(wish.size.boundedTo(window->maximumSize()));
    test::UiWorld::settle();
    const int height = window->height();
    // Columns know how long they are once they have been drawn.
    for (int i = 0; wish.isTall && i < 3; ++i) {
        static_cast<void>(window->grabWindow());
        window->resize(window->width(), tallness(*window, height));
        test::UiWorld::settle();
    }
    if (!wish.click.isEmpty())
        test::WindowProbe(*window).click(wish.click);
    const QString file = wish.folder.filePath(nameOf(page, wish));
    if (wish.state == u"verifying")
        arrive(world);
    const bool isWritten =
        window->grabWindow().convertToFormat(QImage::Format_RGB888).save(file, "PNG", smallest);
    window->resize(window->width(), height);
    std::printf("%s\n", qPrintable(file));
    return isWritten;
}

/// A download of the selected model, some seconds after its beginning.
void download(test::UiWorld& world)
{
    const WhisperModel& model = WhisperModel::fallback();
    // Before the page is there nothing sees how fast it comes.
    world.ui.showPage(SettingsTab::models);
    world.models.download(model);
    for (int second = 0; second <= 5; ++second) {
        world.transfers.tellProgress(world.transfers.lastTask(),
                                     model.approximateSizeBytes * (30 + 2 * second) / 100,
                                     model.approximateSizeBytes);
        test::UiWorld::settle();
        world.clock.advance(std::chrono::seconds(1));
    }
}

/// What may become of the selected model's download.
void prepareDownload(test::UiWorld& world, const QString& state)
{
    if (state == u"downloading") {
        download(world);
    } else if (state == u"refused") {
        world.models.download(WhisperModel::fallback());
        const TransferId task = world.transfers.lastTask();
        world.transfers.tellFinished(task, 503, "busy");
        world.transfers.tellCompleted(task);
    } else if (state == u"verifying") {
        world.models.download(WhisperModel::fallback());
    }
}

/// What an everyday user may meet.
void prepareDay(test::UiWorld& world, const QString& state)
{
    if (state == u"listening") {
        world.controller.start();
        world.scheduler.advance(std::chrono::seconds(75));
        static_cast<void>(world.input.push(std::vector<float>(16000, 0.35F)));
    } else if (state == u"tested") {
        world.microphoneTest.start();
        static_cast<void>(world.input.push(std::vector<float>(16000, 0.35F)));
        test::UiWorld::settle();
        world.microphoneTest.stop();
    } else if (state == u"mute") {
        world.input.setDeviceName({});
        world.input.setFormat({});
        world.microphoneTest.start();
    } else if (state == u"aside") {
        world.defaults.tell(DefaultsError::damaged(
            QStringLiteral("/home/ola/.config/Tulvane/com.dunio.Tulvane.json"),
            QStringLiteral("/home/ola/.config/Tulvane/com.dunio.Tulvane.damaged.json")));
    } else if (state == u"bare") {
        world.statusItem.setBar(false);
        world.settings.showInDock.set(false);
    }
}

/// Brings the program into the state that the pictures show.
void prepare(test::UiWorld& world, const QString& state)
{
    world.input.setDeviceName(QStringLiteral("USB Microphone"));
    // What a user of this system reads.
    world.globalHotkeys.setDisplay(
        [](const KeyCombination& combination) { return linuxKeyDisplay(combination); });
    if (state == u"empty") {
        beginAnew(world);
        return;
    }
    if (state == u"half") {
        setUpHalf(world);
        return;
    }
    if (state == u"downloading" || state == u"refused" || state == u"verifying") {
        prepareDownload(world, state);
        return;
    }
    world.fill();
    const QString model = world.models.fileURL(WhisperModel::fallback());
    world.memory.setResident(812'000'000);
    world.figures.noteLoaded(model, world.clock.now());
    world.figures.noteDictation(model, 9.4, std::chrono::milliseconds(2600), world.clock.now());
    prepareDay(world, state);
    if (state == u"failed") {
        world.engine.transcribeError = EngineError::transcriptionFailed(-6);
        world.controller.start();
        static_cast<void>(world.input.push(std::vector<float>(32000, 0.5F)));
        world.controller.stop();
    } else if (state == u"left") {
        world.privacy.accessibilityGranted = false;
        world.dictate(QStringLiteral("Dette skulle stått et annet sted."));
    } else if (state == u"remnants") {
        world.transfers.left = {
            {WhisperModel::fallback().downloadURL(QUrl(QStringLiteral("http://hub.invalid/"))), 231'000'000},
            {QUrl(QStringLiteral("http://elsewhere.invalid/old")), 1'700'000'000}};
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
                       {QStringLiteral("as"), {}, QStringLiteral("name")},
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
    wish.as = parser.value(QStringLiteral("as"));
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
