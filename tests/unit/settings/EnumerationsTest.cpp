#include <settings/AppLanguage.h>
#include <settings/AppearanceMode.h>
#include <settings/HotkeyMode.h>
#include <settings/InsertionMethod.h>
#include <settings/ModifierHotkey.h>
#include <settings/TranscriptionLanguage.h>

#include <QCoreApplication>
#include <QSet>
#include <QTranslator>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

/// Answers every text with the text in angle brackets, so that a test sees what was translated.
class Brackets final : public QTranslator {
public:
    Brackets() { QCoreApplication::installTranslator(this); }
    Brackets(const Brackets&) = delete;
    Brackets& operator=(const Brackets&) = delete;
    ~Brackets() override { QCoreApplication::removeTranslator(this); }

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char*, const char* text, const char*, int) const override
    {
        return u'<' + QString::fromUtf8(text) + u'>';
    }
};

template <StoredEnumeration E>
void expectCases(const QList<E>& order, const QStringList& raws, const QStringList& titles)
{
    EXPECT_EQ(allCases<E>(), order);
    QStringList foundRaws;
    QStringList foundTitles;
    QSet<E> different;
    for (const E value : allCases<E>()) {
        foundRaws.append(rawValue(value));
        foundTitles.append(title(value));
        EXPECT_EQ(fromRawValue<E>(rawValue(value)), value);
        different.insert(value);
    }
    EXPECT_EQ(foundRaws, raws);
    EXPECT_EQ(foundTitles, titles);
    EXPECT_EQ(different.size(), order.size());
}

TEST(Enumerations, HotkeyMode)
{
    expectCases<HotkeyMode>({HotkeyMode::toggle, HotkeyMode::hold, HotkeyMode::hybrid},
                            {u"toggle"_qs, u"hold"_qs, u"hybrid"_qs},
                            {u"Toggle (press to start, press to stop)"_qs, u"Hold to talk"_qs,
                             u"Hold to talk, tap to toggle"_qs});
}

TEST(Enumerations, ModifierHotkey)
{
    expectCases<ModifierHotkey>(
        {ModifierHotkey::none, ModifierHotkey::rightOption, ModifierHotkey::rightCommand,
         ModifierHotkey::rightControl, ModifierHotkey::rightShift, ModifierHotkey::fn},
        {u"none"_qs, u"rightOption"_qs, u"rightCommand"_qs, u"rightControl"_qs, u"rightShift"_qs, u"fn"_qs},
        {u"Off"_qs, u"Right ⌥ Option"_qs, u"Right ⌘ Command"_qs, u"Right ⌃ Control"_qs, u"Right ⇧ Shift"_qs,
         u"fn / 🌐 Globe"_qs});
}

TEST(Enumerations, TranscriptionLanguage)
{
    expectCases<TranscriptionLanguage>(
        {TranscriptionLanguage::norwegianBokmal, TranscriptionLanguage::norwegianNynorsk,
         TranscriptionLanguage::english, TranscriptionLanguage::automatic},
        {u"no"_qs, u"nn"_qs, u"en"_qs, u"auto"_qs},
        {u"Norsk bokmål"_qs, u"Norsk nynorsk"_qs, u"English"_qs, u"Auto-detect"_qs});
}

TEST(Enumerations, InsertionMethod)
{
    expectCases<InsertionMethod>(
        {InsertionMethod::paste, InsertionMethod::accessibilityThenPaste, InsertionMethod::clipboardOnly},
        {u"paste"_qs, u"accessibilityThenPaste"_qs, u"clipboardOnly"_qs},
        {u"Paste (recommended)"_qs, u"Accessibility API, then paste"_qs, u"Copy to clipboard only"_qs});
}

TEST(Enumerations, AppearanceMode)
{
    expectCases<AppearanceMode>({AppearanceMode::system, AppearanceMode::light, AppearanceMode::dark},
                                {u"system"_qs, u"light"_qs, u"dark"_qs},
                                {u"System"_qs, u"Light"_qs, u"Dark"_qs});
}

TEST(Enumerations, AppLanguage)
{
    expectCases<AppLanguage>({AppLanguage::norwegian, AppLanguage::english}, {u"nb"_qs, u"en"_qs},
                             {u"Norsk"_qs, u"English"_qs});
}

TEST(Enumerations, RawValuesMatchExactly)
{
    for (const QString& wrong :
         {u"Hold"_qs, u"HOLD"_qs, u" hold"_qs, u"hold "_qs, u"hol"_qs, u""_qs, QString()})
        EXPECT_FALSE(fromRawValue<HotkeyMode>(wrong).has_value()) << qPrintable(wrong);
}

TEST(Enumerations, TheNorwegianStandardsReadTheSameInEveryInterfaceLanguage)
{
    const Brackets translator;
    EXPECT_EQ(title(TranscriptionLanguage::norwegianBokmal), u"Norsk bokmål");
    EXPECT_EQ(title(TranscriptionLanguage::norwegianNynorsk), u"Norsk nynorsk");
}

TEST(Enumerations, EveryOtherTitleIsTranslated)
{
    const Brackets translator;
    EXPECT_EQ(title(TranscriptionLanguage::english), u"<English>");
    EXPECT_EQ(title(TranscriptionLanguage::automatic), u"<Auto-detect>");
    const auto expectTranslated = [](const auto& values) {
        for (const auto value : values)
            EXPECT_TRUE(title(value).startsWith(u'<')) << qPrintable(title(value));
    };
    expectTranslated(allCases<HotkeyMode>());
    expectTranslated(allCases<ModifierHotkey>());
    expectTranslated(allCases<InsertionMethod>());
    expectTranslated(allCases<AppearanceMode>());
    expectTranslated(allCases<AppLanguage>());
}

} // namespace
} // namespace tulvane
