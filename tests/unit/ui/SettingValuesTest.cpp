#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/SettingValues.h>

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQmlPropertyMap>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class SettingValuesTest : public testing::Test {
protected:
    SettingValuesTest() { m_context.setContextProperty(QStringLiteral("settings"), m_values); }
    QVariant evaluate(const char* script)
    {
        QQmlExpression expression(&m_context, nullptr, QString::fromLatin1(script));
        const QVariant value = expression.evaluate();
        EXPECT_FALSE(expression.hasError()) << qPrintable(expression.error().toString());
        return value;
    }

    FakeUserDefaults defaults;
    AppSettings settings{defaults};

private:
    QQmlEngine m_engine;
    QQmlPropertyMap* m_values = settingValues(settings, &m_engine);
    QQmlContext m_context{&m_engine};
};

TEST_F(SettingValuesTest, QmlReadsWhatHolds)
{
    EXPECT_EQ(evaluate("settings.playSounds === true && settings.maxRecordingSeconds === 300"),
              QVariant(true));
    settings.playSounds.set(false);
    settings.vocabularyPrompt.set(QStringLiteral("Åse"));
    EXPECT_EQ(evaluate("settings.playSounds"), QVariant(false));
    EXPECT_EQ(evaluate("settings.vocabularyPrompt"), QVariant(QStringLiteral("Åse")));
    EXPECT_EQ(evaluate("settings.hotkeyMode"), QVariant(QStringLiteral("toggle")));
}

TEST_F(SettingValuesTest, WhatQmlWritesIsAssigned)
{
    evaluate("settings.playSounds = false");
    evaluate("settings.maxRecordingSeconds = 60");
    evaluate("settings.hotkeyMode = \"hold\"");
    EXPECT_FALSE(settings.playSounds());
    EXPECT_EQ(settings.maxRecordingSeconds(), 60);
    EXPECT_EQ(settings.hotkeyMode(), HotkeyMode::hold);
    EXPECT_EQ(defaults.value(QStringLiteral("maxRecordingSeconds")), QVariant(qint64{60}));
}

TEST_F(SettingValuesTest, AnotherFormIsRefusedAndGoesBack)
{
    evaluate("settings.playSounds = \"yes\"");
    evaluate("settings.hotkeyMode = \"Hold\"");
    evaluate("settings.hapticFeedback = false");
    EXPECT_TRUE(defaults.writes().isEmpty());
    EXPECT_EQ(evaluate("settings.playSounds"), QVariant(true));
    EXPECT_EQ(evaluate("settings.hotkeyMode"), QVariant(QStringLiteral("toggle")));
    EXPECT_EQ(evaluate("settings.hapticFeedback"), QVariant(true));
}

} // namespace

} // namespace tulvane::test
