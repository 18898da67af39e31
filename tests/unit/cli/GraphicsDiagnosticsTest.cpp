#include <app/program/GraphicsDiagnostics.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

const ComputingDevice device{.index = 0,
                             .name = QStringLiteral("GeForce"),
                             .kind = DeviceKind::discrete,
                             .driver = QStringLiteral("NVIDIA 580"),
                             .totalBytes = 8'000'000'000,
                             .freeBytes = 6'000'000'000};
const GraphicsCard nvidia{.vendor = QStringLiteral("NVIDIA"), .node = QStringLiteral("/dev/dri/renderD128")};

GraphicsFacts facts()
{
    return {.cards = {nvidia},
            .isInstalled = true,
            .devices = {device},
            .wanted = QStringLiteral("auto"),
            .neededBytes = 1'000'000'000,
            .trial = std::nullopt};
}

void expectBad(const GraphicsFacts& given, const char* text, const char* remedy)
{
    const Diagnostic diagnostic = graphicsDiagnostic(given);
    EXPECT_FALSE(diagnostic.works);
    EXPECT_TRUE(diagnostic.text.contains(QLatin1String(text))) << qPrintable(diagnostic.text);
    EXPECT_TRUE(diagnostic.remedy.contains(QLatin1String(remedy))) << qPrintable(diagnostic.remedy);
}

TEST(GraphicsDiagnostic, NamesTheDeviceItsDriverAndItsMemory)
{
    EXPECT_EQ(graphicsDiagnostic(facts()),
              Diagnostic::good(QStringLiteral("graphics card"),
                               QStringLiteral("GeForce (NVIDIA 580; 6000 of 8000 MB free)")));
}

TEST(GraphicsDiagnostic, WithoutACardOrByTheUsersChoiceNothingIsWrong)
{
    GraphicsFacts given = facts();
    given.wanted = QStringLiteral("cpu");
    EXPECT_TRUE(graphicsDiagnostic(given).works);
    given = {.wanted = QStringLiteral("auto")};
    EXPECT_EQ(graphicsDiagnostic(given).text, QStringLiteral("none"));
    given.isInstalled = true;
    EXPECT_EQ(graphicsDiagnostic(given).text, QStringLiteral("none"));
    given = facts();
    given.isInstalled = false;
    EXPECT_TRUE(graphicsDiagnostic(given).text.contains(QStringLiteral("make gpu")));
}

TEST(GraphicsDiagnostic, ACardThatIsNotUsedHasARemedy)
{
    GraphicsFacts given = facts();
    given.devices.clear();
    expectBad(given, "NVIDIA", "nvidia-driver");
    given.cards[0].vendor = QStringLiteral("AMD");
    expectBad(given, "AMD", "mesa-vulkan-drivers");
    given.cards[0].isAccessible = false;
    expectBad(given, "/dev/dri/renderD128", "render");
    given = facts();
    given.neededBytes = 7'000'000'000;
    expectBad(given, "7000 MB", "smaller model");
    given = facts();
    given.wanted = QStringLiteral("Radeon");
    expectBad(given, "Radeon", "tulvane devices");
    given = facts();
    given.trial = false;
    expectBad(given, "failed its trial", "computingDevice \"GeForce\"");
}

} // namespace
} // namespace tulvane
