#include <settings/InterfaceLanguage.h>

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <map>

namespace tulvane {

namespace {

/// Read when it is first asked for. English has entries, too: what a desktop calls otherwise than the code
/// does.
QTranslator& catalogue(AppLanguage language)
{
    static std::map<AppLanguage, QTranslator> catalogues;
    QTranslator& translator = catalogues[language];
    if (translator.isEmpty() &&
        !translator.load(QStringLiteral(":/i18n/tulvane_%1.qm").arg(rawValue(language))))
        qFatal("The program was built without its catalogues.");
    return translator;
}

} // namespace

QLocale formatsFor(AppLanguage language, const QLocale& system)
{
    return system.language() == QLocale::C ? QLocale(rawValue(language)) : system;
}

void installInterfaceLanguage(AppLanguage language)
{
    for (const AppLanguage one : allCases<AppLanguage>())
        QCoreApplication::removeTranslator(&catalogue(one));
    QCoreApplication::installTranslator(&catalogue(language));
    QLocale::setDefault(formatsFor(language, QLocale::system()));
}

ScopedEnglish::ScopedEnglish() : m_before(speakOnly(&catalogue(AppLanguage::english))) {}

ScopedEnglish::~ScopedEnglish()
{
    speakOnly(m_before);
}

} // namespace tulvane
