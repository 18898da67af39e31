#include "IndicatorFixture.h"

#include <settings/InterfaceLanguage.h>
#include <support/Await.h>
#include <ui/look/SymbolItem.h>

#include <QFile>

namespace tulvane::test {

namespace {

struct Shown {
    Phase phase;
    const char* symbol;
    const char* english;
    const char* norwegian;
};

const QList<Shown> everyPhase{
    {{Phase::Kind::idle, {}}, "mic", "", ""},
    {{Phase::Kind::recording, {}}, "mic.fill", "Listening…", "Lytter …"},
    {{Phase::Kind::transcribing, {}}, "waveform", "Transcribing…", "Transkriberer …"},
    {{Phase::Kind::inserting, {}}, "text.cursor", "Inserting…", "Setter inn …"},
    {Phase::notice(QStringLiteral("Too short")), "info.circle", "Too short", "Too short"},
    {Phase::error(QStringLiteral("It broke.")), "exclamationmark.triangle.fill", "It broke.", "It broke."}};

double lengthOf(const QQuickItem& bar)
{
    return bar.property("length").toReal();
}

class IndicatorViewTest : public IndicatorFixture {
protected:
    IndicatorViewTest() { still(); }
    ~IndicatorViewTest() override { installInterfaceLanguage(AppLanguage::english); }

    [[nodiscard]] QRectF indicator()
    {
        const QQuickItem& body = item("indicator.body");
        return {body.x(), body.y(), body.width(), body.height()};
    }
    [[nodiscard]] double bar(int index)
    {
        return item(qPrintable(QStringLiteral("indicator.bar.%1").arg(index))).property("length").toReal();
    }
};

TEST_F(IndicatorViewTest, EveryPhaseHasItsSymbolAndItsWords)
{
    for (const auto& [language, isNorwegian] :
         {std::pair(AppLanguage::english, false), std::pair(AppLanguage::norwegian, true)}) {
        installInterfaceLanguage(language);
        for (const Shown& shown : everyPhase) {
            // Another phase in between: the words are taken when the phase begins.
            show(Phase::notice(QStringLiteral("-")));
            show(shown.phase);
            EXPECT_EQ(item("indicator.symbol").property("name").toString(),
                      QString::fromLatin1(shown.symbol));
            EXPECT_TRUE(QFile::exists(Symbol::file(QString::fromLatin1(shown.symbol)))) << shown.symbol;
            const QString words = QString::fromUtf8(isNorwegian ? shown.norwegian : shown.english);
            EXPECT_EQ(texts(), words.isEmpty() ? QStringList() : QStringList{words});
            EXPECT_EQ(WindowProbe(*m_indicator.panel()).has(QStringLiteral("indicator.meter")),
                      shown.phase.kind == Phase::Kind::recording);
            EXPECT_EQ(WindowProbe(*m_indicator.panel()).layoutFlaws(), QStringList()) << qPrintable(words);
        }
    }
}

TEST_F(IndicatorViewTest, TheWordsEndInOneEllipsisCharacter)
{
    for (const Shown& shown : everyPhase.mid(1, 3))
        EXPECT_TRUE(QString::fromUtf8(shown.english).endsWith(QChar(0x2026)));
}

TEST_F(IndicatorViewTest, TheIndicatorHugsItsWordsInTheMiddleOfItsWindow)
{
    double widest = 0;
    for (const char* words : {"Nothing heard", "Nothing recognised", "Copied to clipboard, paste it"}) {
        show(Phase::notice(QString::fromUtf8(words)));
        const QRectF body = indicator();
        EXPECT_EQ(body.center().x(), 158);
        EXPECT_EQ(body.bottom(), 104 - 28);
        EXPECT_EQ(body.height(), 48);
        EXPECT_GT(body.width(), widest);
        widest = body.width();
        const QQuickItem& label = item("indicator.label");
        const double right = label.mapRectToScene({0, 0, label.property("contentWidth").toReal(), 1}).right();
        EXPECT_NEAR(body.right() - right, 18, 2);
        EXPECT_NEAR(item("indicator.symbol").mapToScene({0, 0}).x() - body.left(), 18, 2);
    }
    show({});
    EXPECT_EQ(indicator().width(), indicator().height());
}

TEST_F(IndicatorViewTest, LongWordsGoOverTwoLinesAndEndInAnEllipsisBeyond)
{
    show(Phase::notice(QStringLiteral("Microphone changed – recording cancelled")));
    EXPECT_EQ(item("indicator.label").property("lineCount").toInt(), 2);
    EXPECT_FALSE(item("indicator.label").property("truncated").toBool());
    EXPECT_EQ(indicator().bottom(), 104 - 28);
    EXPECT_GT(indicator().height(), 48);

    show(Phase::error(QStringLiteral("word ").repeated(60)));
    EXPECT_EQ(item("indicator.label").property("lineCount").toInt(), 2);
    EXPECT_TRUE(item("indicator.label").property("truncated").toBool());
    // Room for the shadow is left on every side.
    EXPECT_TRUE(QRectF(16, 14, 284, 62).contains(indicator())) << indicator().x() << " " << indicator().y();
    const QQuickItem& label = item("indicator.label");
    EXPECT_TRUE(indicator().contains(label.mapRectToScene({0, 0, label.width(), label.height()})));
    show(Phase::error(QStringLiteral("m").repeated(200)));
    EXPECT_TRUE(QRectF(16, 14, 284, 62).contains(indicator())) << indicator().width();
}

TEST_F(IndicatorViewTest, MarkupInAMessageIsShownAsItStands)
{
    show(Phase::error(QStringLiteral("<b>a</b> & <img src='file:///x'>")));
    EXPECT_EQ(item("indicator.label").property("textFormat").toInt(), static_cast<int>(Qt::PlainText));
}

TEST_F(IndicatorViewTest, TheMetersFrameAndBarsHaveTheirSizes)
{
    show({Phase::Kind::recording, {}});
    const QQuickItem& meter = item("indicator.meter");
    EXPECT_EQ(QSizeF(meter.width(), meter.height()), QSizeF(44, 18));
    EXPECT_EQ(meter.property("bars").toInt(), 5);
    double last = -1;
    for (int i = 0; i < 5; ++i) {
        const QQuickItem& one = item(qPrintable(QStringLiteral("indicator.bar.%1").arg(i)));
        EXPECT_EQ(QSizeF(one.width(), one.height()), QSizeF(4, 18));
        if (last >= 0) {
            EXPECT_EQ(one.x() - last, 7);
        }
        last = one.x();
    }
    EXPECT_FALSE(WindowProbe(*m_indicator.panel()).has(QStringLiteral("indicator.bar.5")));
}

TEST_F(IndicatorViewTest, TheMeterGrowsFromTheMiddleOutwards)
{
    show({Phase::Kind::recording, {}});
    const auto expected = [](int index, double level) {
        const double late = std::abs(index - 2.0) / 5 * 0.6;
        return 4 + 14 * std::max(level - late, 0.0) / (1 - late);
    };
    for (const double level : {0.0, 0.1, 0.12, 0.2, 0.24, 0.5, 0.99, 1.0}) {
        m_indicator.setLevel(static_cast<float>(level));
        for (int i = 0; i < 5; ++i)
            EXPECT_NEAR(bar(i), expected(i, level), 1e-4) << "bar " << i << " at " << level;
    }
    m_indicator.setLevel(0);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(bar(i), 4);
    m_indicator.setLevel(0.2F);
    EXPECT_GT(bar(2), bar(1));
    EXPECT_GT(bar(1), bar(0));
    EXPECT_EQ(bar(0), 4);
    EXPECT_EQ(bar(1), bar(3));
    m_indicator.setLevel(3); // beyond the scale is its end
    for (int i = 0; i < 5; ++i)
        EXPECT_NEAR(bar(i), 18, 1e-4);
}

TEST_F(IndicatorViewTest, TheBarsMoveOnlyWhileTheIndicatorCanBeSeen)
{
    m_world.presentation.setReducedMotion(false);
    show({Phase::Kind::recording, {}});
    m_indicator.setLevel(1);
    EXPECT_LT(bar(2), 18); // on its way
    EXPECT_TRUE(waitUntil([&] { return bar(2) == 18; }));
    const QQuickItem& middle = item("indicator.bar.2");
    m_indicator.hide(false);
    m_indicator.setLevel(0);
    EXPECT_EQ(lengthOf(middle), 18);
    EXPECT_FALSE(waitUntil([&] { return lengthOf(middle) != 18; }, std::chrono::milliseconds(120)));
    m_indicator.show();
    EXPECT_TRUE(waitUntil([&] { return lengthOf(middle) == 4; }));
}

TEST_F(IndicatorViewTest, ABarIsStrongAboveAndWeakerBelowAndEndsBetweenPixels)
{
    show({Phase::Kind::recording, {}});
    m_indicator.setLevel(1);
    UiWorld::settle();
    const QPoint bar = item("indicator.bar.2").mapToScene({0, 0}).toPoint();
    const QImage full = picture();
    EXPECT_GT(full.pixelColor(bar + QPoint(1, 3)).green(), full.pixelColor(bar + QPoint(1, 14)).green() + 20);
    m_indicator.setLevel(0.53F); // 11.42 high: ends at 3.29 and 14.71
    UiWorld::settle();
    const QImage part = picture();
    const int ground = part.pixelColor(bar + QPoint(1, 1)).green();
    const int end = part.pixelColor(bar + QPoint(1, 3)).green();
    EXPECT_GT(end, ground + 10);
    EXPECT_LT(end, part.pixelColor(bar + QPoint(1, 6)).green() - 10);
}

TEST_F(IndicatorViewTest, LooksTheSameInBothAppearances)
{
    show(Phase::notice(QStringLiteral("Too short")));
    const QImage light = picture();
    m_world.presentation.setSystemAppearance(Appearance::dark);
    UiWorld::settle();
    EXPECT_EQ(picture(), light);
    m_world.presentation.setSystemAppearance(Appearance::light);
}

TEST_F(IndicatorViewTest, OutsideTheIndicatorIsNothingButASoftShadow)
{
    show({Phase::Kind::recording, {}});
    const QImage image = picture().convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(image.size(), QSize(316, 104));
    for (int x = 0; x < image.width(); ++x) {
        EXPECT_EQ(qAlpha(image.pixel(x, 0)), 0);
        EXPECT_EQ(qAlpha(image.pixel(x, 103)), 0);
    }
    for (int y = 0; y < image.height(); ++y) {
        EXPECT_EQ(qAlpha(image.pixel(0, y)), 0);
        EXPECT_EQ(qAlpha(image.pixel(315, y)), 0);
    }
    const QPoint below(158, static_cast<int>(indicator().bottom()) + 3);
    EXPECT_GT(qAlpha(image.pixel(below)), 20);
    EXPECT_LT(qAlpha(image.pixel(below)), 140);
    const QPoint body(158, static_cast<int>(indicator().top()) + 5);
    EXPECT_GT(qAlpha(image.pixel(body)), 230);
}

} // namespace

} // namespace tulvane::test
