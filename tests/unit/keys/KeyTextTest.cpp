#include <base/Translate.h>
#include <platform/linux/keys/KeyText.h>
#include <ports/KeyModifiers.h>

#include <QTranslator>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

QString text(quint32 keyCode, quint32 modifiers, const KeyLabel& labelOf = {})
{
    return linuxKeyDisplay({keyCode, modifiers}, labelOf).text();
}

TEST(KeyText, IsWrittenAsLinuxDesktopsWriteIt)
{
    EXPECT_EQ(text(49, carbon::option), QStringLiteral("Alt+Space"));
    EXPECT_EQ(text(2, carbon::all), QStringLiteral("Super+Ctrl+Alt+Shift+D"));
    EXPECT_EQ(text(96, 0), QStringLiteral("F5"));
    EXPECT_EQ(text(83, carbon::control), QStringLiteral("Ctrl+Keypad 1"));
    EXPECT_EQ(text(61, 0), QStringLiteral("Right Alt"));
    EXPECT_EQ(text(999, carbon::control), QStringLiteral("Ctrl+Key 999"));
    EXPECT_EQ(linuxKeyDisplay({49, carbon::option}).caps,
              (QStringList{QStringLiteral("Alt"), QStringLiteral("Space")}));
}

TEST(KeyText, PrintingKeysHaveTheNameThatTheLayoutGivesThem)
{
    const KeyLabel norwegian = [](const VirtualKey& key) {
        return key.code == 41 ? QStringLiteral("Ø") : QString();
    };
    EXPECT_EQ(text(41, carbon::option, norwegian), QStringLiteral("Alt+Ø"));
    EXPECT_EQ(text(0, carbon::option, norwegian), QStringLiteral("Alt+A"));
    const KeyLabel nonsense = [](const VirtualKey&) { return QStringLiteral("?"); };
    EXPECT_EQ(text(49, carbon::option, nonsense), QStringLiteral("Alt+Space"));
}

class Shouted final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* /*context*/, const char* text, const char* /*comment*/,
                                    int /*count*/) const override
    {
        return QString::fromUtf8(text).toUpper();
    }
};

TEST(KeyText, NamesAreTranslatedButNotTheHomeKeysWhichIsAPagesToo)
{
    const Shouted words;
    speakOnly(&words);
    EXPECT_EQ(text(49, carbon::option), QStringLiteral("ALT+SPACE"));
    EXPECT_EQ(text(115, carbon::option), QStringLiteral("ALT+Home"));
    speakOnly(nullptr);
}

} // namespace

} // namespace tulvane
