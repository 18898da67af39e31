#include <ui/look/InterfaceLanguage.h>

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace tulvane {

namespace {

QLocale localeFor(AppLanguage language)
{
    const QLocale system = QLocale::system();
    const auto wanted = language == AppLanguage::english ? QLocale::English : QLocale::NorwegianBokmal;
    return system.language() == wanted ? system : QLocale(wanted);
}

} // namespace

void installInterfaceLanguage(AppLanguage language)
{
    static QTranslator translator;
    QCoreApplication::removeTranslator(&translator);
    if (!translator.load(language == AppLanguage::english ? QStringLiteral(":/i18n/tulvane_en.qm")
                                                          : QStringLiteral(":/i18n/tulvane_nb.qm")))
        qFatal("The program was built without its catalogues.");
    QCoreApplication::installTranslator(&translator);
    QLocale::setDefault(localeFor(language));
}

} // namespace tulvane
