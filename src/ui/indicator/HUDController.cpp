#include <ports/IndicatorSurface.h>
#include <ui/indicator/HUDController.h>
#include <ui/look/Look.h>
#include <ui/windows/ProgramWindow.h>

#include <QQuickItem>
#include <QQuickView>

#include <utility>

namespace tulvane {

namespace {

std::chrono::milliseconds unlessStill(std::chrono::milliseconds time)
{
    return Look::shared().isAnimated() ? time : std::chrono::milliseconds(0);
}

} // namespace

HUDController::HUDController(Dependencies neighbours)
    : m_dependencies(std::move(neighbours)),
      m_time(m_model, m_dependencies.scheduler, m_dependencies.clock),
      m_fade(m_dependencies.scheduler, m_dependencies.clock,
             [this](double opacity) { applyOpacity(opacity); })
{
}

HUDController::~HUDController() = default;

void HUDController::setLongestRecording(std::function<std::chrono::seconds()> longest)
{
    m_longest = std::move(longest);
}

void HUDController::setPhase(const Phase& phase)
{
    const bool wasRecording = m_model.state() == HUDModel::State::Recording;
    const bool isRecording = phase.kind == Phase::Kind::recording;
    m_model.setPhase(phase);
    if (isRecording && !wasRecording) {
        m_time.begin(m_longest());
        m_isPlaceOld = true;
    } else if (!isRecording) {
        m_time.end();
    }
}

void HUDController::applyOpacity(double opacity)
{
    if (m_window && m_panel)
        m_panel->setOpacity(*m_window, opacity);
    else if (m_picture && m_panel)
        m_panel->surface()->setOpacity(opacity);
}

bool HUDController::isOnScreen() const
{
    return m_window ? m_window->isVisible() : m_isPictureShown;
}

void HUDController::make()
{
    m_panel = m_dependencies.makePanel();
    if (IndicatorSurface* const surface = m_panel->surface())
        makePicture(*surface);
    else
        makeWindow();
}

void HUDController::makePicture(IndicatorSurface& surface)
{
    m_picture = std::make_unique<IndicatorPicture>(
        m_dependencies.engine(), QStringLiteral("indicator/IndicatorView"),
        QVariantMap{{QStringLiteral("model"), QVariant::fromValue(&m_model)}}, contentSize,
        [&surface](const QImage& picture) { surface.show(picture, ScreenLayout::panelFromLowerEdge); });
}

void HUDController::makeWindow()
{
    m_window = tulvane::makeWindow(
        m_dependencies.engine(), {.name = QStringLiteral("indicator/IndicatorView"),
                                  .title = QStringLiteral("Tulvane"),
                                  .smallest = contentSize,
                                  .properties = {{QStringLiteral("model"), QVariant::fromValue(&m_model)}}});
    m_window->setMaximumSize(contentSize);
    m_window->resize(contentSize);
    m_window->setColor(Qt::transparent);
    m_panel->prepare(*m_window);
    connect(m_window->rootObject(), SIGNAL(outlineChanged()), this, SLOT(cutToOutline()));
}

void HUDController::show()
{
    if (m_isClosed)
        return;
    m_hideTask.reset();
    if (!m_panel)
        make();
    m_model.setBlended(m_panel->isBlended());
    if (m_window) {
        place();
        cutToOutline();
    }
    if (!isOnScreen())
        appear();
    else if (m_picture && m_isPlaceOld)
        moveSurface();
    m_isPlaceOld = false;
    if (m_window)
        m_panel->raise(*m_window);
    m_fade.run(1, unlessStill(fadeInTime));
}

void HUDController::appear()
{
    m_fade.set(m_model.isBlended() && Look::shared().isAnimated() ? 0 : 1);
    if (m_window)
        m_window->show();
    m_model.setShown(true);
    m_time.setShown(true);
    if (m_picture) {
        m_isPictureShown = true;
        m_picture->start(m_panel->surface()->scale());
    }
}

void HUDController::moveSurface()
{
    // What is left of the dictation before may stand on another screen than the one in use now, and a surface
    // cannot move.
    m_panel->surface()->hide();
    m_picture->start(m_panel->surface()->scale());
}

void HUDController::hide(bool animated)
{
    if (m_hideTask && animated)
        return; // it is on its way out
    m_hideTask.reset();
    if (!isOnScreen())
        return;
    const auto time =
        animated && m_model.isBlended() ? unlessStill(fadeOutTime) : std::chrono::milliseconds(0);
    if (time.count() == 0) {
        remove();
        return;
    }
    m_fade.run(0, time);
    m_hideTask = m_dependencies.scheduler.after(time, [this] { remove(); });
}

void HUDController::remove()
{
    m_hideTask.reset();
    // Some compositors play a farewell of their own; of something that cannot be seen it does not show.
    m_fade.set(0);
    if (m_window)
        m_window->hide();
    if (m_picture) {
        m_isPictureShown = false;
        m_picture->stop();
        m_panel->surface()->hide();
    }
    m_time.setShown(false);
    m_model.setShown(false);
}

void HUDController::close()
{
    m_isClosed = true;
    m_time.end();
    m_hideTask.reset();
    m_isPictureShown = false;
    m_picture.reset();
    m_panel.reset();
    m_window.reset();
    m_model.setShown(false);
}

void HUDController::place()
{
    if (const auto origin = m_dependencies.screens().panelPlace(contentSize))
        m_window->setGeometry(QRect(*origin, contentSize));
}

void HUDController::cutToOutline()
{
    const QQuickItem* const view = m_window->rootObject();
    std::optional<PanelOutline> outline;
    if (!m_model.isBlended())
        outline = {view->property("outline").toRectF(), view->property("outlineRadius").toDouble()};
    m_panel->cut(*m_window, outline);
}

} // namespace tulvane
