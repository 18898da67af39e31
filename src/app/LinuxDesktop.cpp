#include <app/LinuxDesktop.h>
#include <app/program/ProgramFolders.h>
#include <insertion/PasteTable.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/desktop/AutostartEntry.h>
#include <platform/linux/desktop/DesktopWorkspace.h>
#include <platform/linux/desktop/shell/DesktopPresentation.h>
#include <platform/linux/desktop/shell/TrayStatusItem.h>
#include <platform/linux/process/ChildProcesses.h>
#include <platform/linux/pulse/PulseAudioInput.h>
#include <platform/linux/pulse/PulseServer.h>
#include <platform/linux/pulse/PulseSounds.h>
#include <platform/linux/session/DisplayCheck.h>
#include <platform/linux/session/KeyServices.h>
#include <platform/linux/session/X11PrivacyPermissions.h>
#include <platform/linux/session/X11Text.h>
#include <platform/linux/transfers/DetachedTransfers.h>
#include <platform/linux/x11/connection/X11Connection.h>
#include <platform/linux/x11/windows/X11IndicatorPanel.h>
#include <platform/linux/x11/windows/X11KeyboardGrab.h>

#include <QProcessEnvironment>

#include <ports/UserDefaults.h>

namespace tulvane {

namespace {

QStringList desktopNames()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

} // namespace

struct LinuxDesktop::Parts {
    Parts(UserDefaults& stored, std::unique_ptr<X11Text> opened, const QByteArray& display)
        : defaults(stored),
          watch(X11Connection::open(QString::fromLocal8Bit(display))),
          text(std::move(opened)),
          keys(makeKeyServices(QProcessEnvironment::systemEnvironment())),
          permissions(X11Text::abilities(display, currentSession()),
                      [this] { return microphone.server()->refusesMicrophone(); }),
          workspace(desktopNames(), QUrl::fromLocalFile(ProgramFolders::ofThisProgram().helpPage())),
          transfers({.helper = ProgramFolders::ofThisProgram().transferHelper(),
                     .folder = ModelFolders::standard().transfers()})
    {
    }

    UserDefaults& defaults;
    std::unique_ptr<X11Connection> watch; ///< tells of the server's end; null when that has come already
    std::unique_ptr<X11Text> text;
    PulseAudioInput microphone;
    PulseSounds sounds{microphone.server()};
    KeyServices keys;
    X11PrivacyPermissions permissions;
    ChildProcesses processes;
    DesktopWorkspace workspace;
    DetachedTransfers transfers;
    DesktopPresentation presentation;
    X11KeyboardGrab keyboard;
    AutostartEntry loginItem{AutostartEntry::standardFolder(), ProgramFolders::ofThisProgram().commandLine()};
    AtspiFocusedElements elements{AtspiFocusedElements::usersSessionBus(),
                                  [this] { return text->frontProcess(); }};
    std::optional<TrayStatusItem> statusItem;
};

LinuxDesktop::LinuxDesktop(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
LinuxDesktop::~LinuxDesktop() = default;

Result<std::unique_ptr<LinuxDesktop>, QString> LinuxDesktop::open(UserDefaults& defaults,
                                                                  Scheduler& scheduler)
{
    const QByteArray display = qgetenv("DISPLAY");
    if (const auto reason = displayObstacle(display))
        return failure(*reason);
    auto text = X11Text::open(display, pasteTable(defaults.value(terminalWindowClassesKey)), scheduler);
    if (!text)
        return failure(QStringLiteral("The X server %1 lacks what Tulvane needs: `tulvane doctor` says more.")
                           .arg(QString::fromLocal8Bit(display)));
    return std::unique_ptr<LinuxDesktop>(
        new LinuxDesktop(std::make_unique<Parts>(defaults, std::move(text), display)));
}

std::unique_ptr<IndicatorPanel> LinuxDesktop::makeIndicatorPanel()
{
    return std::make_unique<X11IndicatorPanel>(qgetenv("DISPLAY"));
}

void LinuxDesktop::setEnded(const std::function<void()>& ended)
{
    if (m_parts->watch)
        QObject::connect(m_parts->watch.get(), &X11Connection::closed, m_parts->watch.get(), ended);
}

StatusItem& LinuxDesktop::statusItem()
{
    if (!m_parts->statusItem)
        m_parts->statusItem.emplace(QStringLiteral(":/symbols"), desktopNames());
    return *m_parts->statusItem;
}

Desktop LinuxDesktop::ports()
{
    return {.defaults = m_parts->defaults,
            .microphone = m_parts->microphone,
            .sounds = m_parts->sounds,
            .hotkeys = *m_parts->keys.hotkeys,
            .modifierEvents = *m_parts->keys.modifierEvents,
            .pasteboards = m_parts->text->pasteboards(),
            .keys = m_parts->text->keys(),
            .elements = m_parts->elements,
            .permissions = m_parts->permissions,
            .processes = m_parts->processes,
            .workspace = m_parts->workspace,
            .transfers = m_parts->transfers,
            .presentation = m_parts->presentation,
            .keyboard = m_parts->keyboard,
            .loginItem = m_parts->loginItem,
            .beep = [parts = m_parts.get()] {
                if (parts->watch)
                    parts->watch->ringBell();
            }};
}

} // namespace tulvane
