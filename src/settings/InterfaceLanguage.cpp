#include <settings/InterfaceLanguage.h>

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace tulvane {

namespace {

/// Read when it is first asked for.
QTranslator& catalogue(AppLanguage language)
{
    const auto load = [](QTranslator& translator, const QString& file) {
        if (!translator.load(file))
            qFatal("The program was built without its catalogues.");
    };
    // English has entries, too: what a desktop calls otherwise than the code does.
    static QTranslator english;
    static QTranslator norwegian;
    if (language == AppLanguage::english) {
        if (english.isEmpty())
            load(english, QStringLiteral(":/i18n/tulvane_en.qm"));
        return english;
    }
    if (norwegian.isEmpty())
        load(norwegian, QStringLiteral(":/i18n/tulvane_nb.qm"));
    return norwegian;
}

QLocale localeFor(AppLanguage language)
{
    const QLocale system = QLocale::system();
    const auto wanted = language == AppLanguage::english ? QLocale::English : QLocale::NorwegianBokmal;
    return system.language() == wanted ? system : QLocale(wanted);
}

} // namespace

void installInterfaceLanguage(AppLanguage language)
{
    for (const AppLanguage one : allCases<AppLanguage>())
        QCoreApplication::removeTranslator(&catalogue(one));
    QCoreApplication::installTranslator(&catalogue(language));
    QLocale::setDefault(localeFor(language));
}

ScopedEnglish::ScopedEnglish()
{
    speakOnly(&catalogue(AppLanguage::english));
}

ScopedEnglish::~ScopedEnglish()
{
    speakOnly(nullptr);
}

} // namespace tulvane
