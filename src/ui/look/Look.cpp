#include <ports/Presentation.h>
#include <ui/look/Look.h>

#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlEngine>

namespace tulvane {

namespace {

const QString drawnFor = QStringLiteral("Inter");

} // namespace

Look::Look() : m_fontFamily(QFontDatabase::hasFamily(drawnFor) ? drawnFor : QGuiApplication::font().family())
{
}

Look& Look::shared()
{
    // Outlives every engine and window, whichever order a program's end comes in.
    static auto* const look = new Look;
    return *look;
}

Look* Look::create(QQmlEngine* /*qmlEngine*/, QJSEngine* /*jsEngine*/)
{
    QQmlEngine::setObjectOwnership(&shared(), QQmlEngine::CppOwnership);
    return &shared();
}

void Look::follow(Presentation& presentation)
{
    const auto take = [this, &presentation] {
        setDark(presentation.effectiveAppearance() == Appearance::dark);
        setAnimated(!presentation.prefersReducedMotion());
    };
    presentation.setChangeHandler(take);
    take();
}

void Look::setDark(bool dark)
{
    if (m_dark == dark)
        return;
    m_dark = dark;
    Q_EMIT changed();
}

void Look::setAnimated(bool animated)
{
    if (m_animated == animated)
        return;
    m_animated = animated;
    Q_EMIT changed();
}

} // namespace tulvane
