#include "ControllerFixture.h"

namespace tulvane {
namespace {

class ReadinessTest : public test::ControllerFixture {};

TEST_F(ReadinessTest, EachThingThatItRestsOnIsToldWhenItChanges)
{
    int told = 0;
    const Readiness& readiness = controller->readiness();
    QObject::connect(&readiness, &Readiness::changed, [&told] { ++told; });
    models.become(std::nullopt);
    EXPECT_EQ(told, 1);
    permissions.refresh();
    EXPECT_EQ(told, 2);
    settings.selectedModelID.set(QStringLiteral("nb-whisper-medium"));
    EXPECT_EQ(told, 3);
    settings.modifierHotkey.set(ModifierHotkey::fn);
    EXPECT_EQ(told, 4);
}

TEST_F(ReadinessTest, ASingleKeyIsAHotkeyAsACombinationIs)
{
    const Readiness& readiness = controller->readiness();
    EXPECT_TRUE(readiness.isComplete());
    hasCombination = false;
    EXPECT_TRUE(readiness.canDictate());
    EXPECT_FALSE(readiness.isComplete());
    settings.modifierHotkey.set(ModifierHotkey::fn);
    EXPECT_TRUE(readiness.isComplete());
}

} // namespace
} // namespace tulvane
