#include <settings/InterfaceLanguage.h>
#include <support/Await.h>
#include <support/ui/UiWorld.h>

#include <QFile>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickWindow>

#include <algorithm>

namespace tulvane::test {

namespace {

const QDateTime noon(QDate(2026, 11, 20), QTime(12, 0), QTimeZone("Europe/Oslo"));

ModelManager::Options modelOptions(const ScratchFolder& folder)
{
    return {.folders = {folder.file(QStringLiteral("Models")), folder.file(QStringLiteral("tmp"))},
            .hub = QUrl(QStringLiteral("http://hub.invalid/")),
            .mode = ModelManager::SessionMode::ordinary,
            .catalogue = WhisperModel::all()};
}

/// Rows and columns place what is in them just before a frame is drawn, whenever that is: sizes count
/// afterwards.
void layOut(QQuickItem& item)
{
    const QList<QQuickItem*> inner = item.childItems();
    for (QQuickItem* const each : inner)
        layOut(*each);
    item.ensurePolished();
}

} // namespace

QImage pictureOf(QQuickItem& item)
{
    const qreal scale = item.window()->effectiveDevicePixelRatio();
    const auto grabbed = item.grabToImage((item.size() * scale).toSize());
    static_cast<void>(waitUntil([&] { return !grabbed->image().isNull(); }));
    QImage image = grabbed->image();
    image.setDevicePixelRatio(scale);
    return image;
}

UiWorld::UiWorld(AppLanguage language)
    : models(modelOptions(folder), transfers),
      session({.settings = settings,
               .recorder = recorder,
               .models = modelSource,
               .engine = engine,
               .stats = stats,
               .scheduler = scheduler,
               .clock = clock,
               .isMicrophoneAuthorized =
                   [this] { return privacy.microphoneAccess == MicrophoneAccess::authorized; },
               .threadCount = 1,
               .fixedOptions = std::nullopt,
               .figures = &figures}),
      ui({.makePanel =
              [this] {
                  auto made = std::make_unique<FakeIndicatorPanel>();
                  panel = made.get();
                  return made;
              },
          .scheduler = scheduler,
          .clock = clock}),
      controller(
          {.settings = settings,
           .session = session,
           .recorder = recorder,
           .models = modelSource,
           .permissions = permissions,
           .inserter = inserter,
           .hotkeys = hotkeys,
           .indicator = indicator,
           .windows = ui,
           .sounds = sounds,
           .scheduler = scheduler,
           .version = QStringLiteral("0.1.0"),
           .refreshModels = [this] { models.refreshStates(); },
           .hasCombination = [this] { return shortcuts.getShortcut(ShortcutName::dictate()).has_value(); },
           .applyActivationPolicy = [] {}})
{
    statusItem.setSymbol(QStringLiteral("mic"));
    clock.setNow(noon);
    input.setFormat({.sampleRate = 16000, .channels = 1});
    installInterfaceLanguage(language);
    settings.appLanguage.set(language);
    ui.attach(context());
}

UiWorld::~UiWorld()
{
    ui.detach();
}

UiContext UiWorld::context()
{
    return {.settings = settings,
            .session = session,
            .controller = controller,
            .demonstration = demonstration,
            .recorder = recorder,
            .microphoneTest = microphoneTest,
            .models = models,
            .figures = figures,
            .stats = stats,
            .permissions = permissions,
            .shortcuts = shortcuts,
            .hotkeys = hotkeys,
            .pasteboards = boards,
            .workspace = workspace,
            .presentation = presentation,
            .keyboard = keyboard,
            .loginItem = loginItem,
            .statusItem = statusItem,
            .scheduler = scheduler,
            .clock = clock,
            .version = QStringLiteral("0.1.0"),
            .computing = &computing,
            .relaunch = [this] { ++relaunches; },
            .quit = [this] { ++quits; },
            .beep = [this] { ++beeps; },
            .announce = [this](const QString& text) { announced.append(text); }};
}

void UiWorld::settle()
{
    for (int i = 0; i < 8; ++i)
        QCoreApplication::processEvents();
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow* const each : windows) {
        if (auto* const window = qobject_cast<QQuickWindow*>(each))
            layOut(*window->contentItem());
    }
}

void UiWorld::installModel(const QString& id)
{
    const auto model = WhisperModel::find(id);
    QFile file(models.fileURL(*model));
    // The place alone says that the model is there; its content was checked when it was put there.
    if (!file.open(QIODevice::WriteOnly) || !file.resize(model->approximateSizeBytes))
        qFatal("could not make %s", qPrintable(file.fileName()));
    file.close();
    models.refreshStates();
}

void UiWorld::dictate(const QString& text, double seconds)
{
    engine.text = text;
    controller.start();
    settle();
    static_cast<void>(input.push(std::vector<float>(static_cast<std::size_t>(seconds * 16000), 0.5F)));
    controller.stop();
    // The waits around the paste.
    for (int i = 0; i < 12; ++i) {
        settle();
        scheduler.advance(std::chrono::milliseconds(500));
    }
    settle();
}

void UiWorld::fillStatistics()
{
    const QString word = QStringLiteral("ord ");
    for (int back = 40; back >= 1; --back) {
        // A week has its quiet days, and no two weeks are alike.
        const int day = (40 - back) % 7;
        const int dictations = day == 5 ? 0 : day == 6 ? 1 : 3 + (back * 7) % 5;
        for (int i = 0; i < dictations; ++i) {
            const int words = 14 + (back * 13 + i * 29) % 47;
            stats.record(word.repeated(words), noon.addDays(-back), words / 2.4);
        }
    }
}

void UiWorld::fill()
{
    installModel(settings.selectedModelID());
    fillStatistics();
    settings.vocabularyPrompt.set(QStringLiteral("Fjordkraft, Solveig Aasen, Q3"));
    settings.modifierHotkey.set(ModifierHotkey::rightOption);
    const QStringList texts{
        QStringLiteral("Hei, jeg kommer litt senere i dag. Kan dere begynne uten meg?"),
        QStringLiteral("Møtet på torsdag flyttes til klokken ti."),
        QStringLiteral("Please send me the final version of the report before Friday."),
        QStringLiteral(
            "Husk å bestille nye kort til kontoret, og spør Solveig om hun trenger noe fra byen på vei "
            "tilbake, for da kan vi ta alt på én gang og slippe å kjøre to ganger."),
        QStringLiteral("Eg skal ringe deg i morgon tidleg."),
        QStringLiteral("God morgen!")};
    for (const QString& text : texts) {
        dictate(text, std::max(1.2, static_cast<double>(text.size()) / 14));
        scheduler.advance(std::chrono::minutes(17));
    }
}

} // namespace tulvane::test
