#include <base/Translate.h>

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

class OneWordTranslator final : public QTranslator {
public:
    [[nodiscard]] QString translate(const char* context, const char* source, const char*, int) const override
    {
        const bool known = QByteArrayView(context) == "tulvane" && QByteArrayView(source) == "Toggle";
        return known ? QStringLiteral("Veksle") : QString();
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

} // namespace

TEST(Translate, AnswersTheKeyWithoutACatalogue)
{
    EXPECT_EQ(translate("No microphone is available."), QStringLiteral("No microphone is available."));
}

TEST(Translate, AsksTheInstalledCatalogueAndFallsBackToTheKey)
{
    OneWordTranslator translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(translate("Toggle"), QStringLiteral("Veksle"));
    EXPECT_EQ(translate("Unknown – æøå"), QStringLiteral("Unknown – æøå"));
    QCoreApplication::removeTranslator(&translator);
}

TEST(Translate, OneCatalogueCanSpeakAlone)
{
    OneWordTranslator application;
    QCoreApplication::installTranslator(&application);
    const QTranslator empty;
    speakOnly(&empty);
    EXPECT_EQ(translate("Toggle"), QStringLiteral("Toggle"));
    speakOnly(nullptr);
    EXPECT_EQ(translate("Toggle"), QStringLiteral("Veksle"));
    QCoreApplication::removeTranslator(&application);
}

} // namespace tulvane
