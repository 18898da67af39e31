#include "SoundsWorld.h"

using namespace tulvane;
using namespace tulvane::test;

namespace {

class SoundsContract : public ::testing::TestWithParam<Backend> {
protected:
    std::unique_ptr<SoundsWorld> world = GetParam().make();
};

QStringList list(std::initializer_list<QLatin1StringView> names)
{
    return {names.begin(), names.end()};
}

} // namespace

TEST_P(SoundsContract, EachNameIsItsSound)
{
    for (const QLatin1StringView name : {Sounds::pop, Sounds::tink, Sounds::morse, Sounds::basso}) {
        world->sounds().play(name);
        EXPECT_EQ(world->heard(), list({name}));
    }
}

TEST_P(SoundsContract, TheSameSoundCanComeAgain)
{
    world->sounds().play(Sounds::tink);
    EXPECT_EQ(world->heard(), list({Sounds::tink}));
    world->sounds().play(Sounds::tink);
    EXPECT_EQ(world->heard(), list({Sounds::tink}));
}

TEST_P(SoundsContract, AnUnknownNameIsSilent)
{
    for (const QLatin1StringView name :
         {QLatin1StringView("Ping"), QLatin1StringView("pop"), QLatin1StringView(""), QLatin1StringView()})
        world->sounds().play(name);
    EXPECT_EQ(world->heard(), QStringList());
    world->sounds().play(Sounds::pop);
    EXPECT_EQ(world->heard(), list({Sounds::pop}));
}

TEST_P(SoundsContract, WithoutAPlayThereIsSilence)
{
    EXPECT_EQ(world->heard(), QStringList());
}

TEST_P(SoundsContract, NoMicrophoneIsOpened)
{
    EXPECT_FALSE(world->isMicrophoneOpen());
    world->sounds().play(Sounds::basso);
    EXPECT_FALSE(world->isMicrophoneOpen());
    EXPECT_EQ(world->heard(), list({Sounds::basso}));
    EXPECT_FALSE(world->isMicrophoneOpen());
}

INSTANTIATE_TEST_SUITE_P(Backends, SoundsContract,
                         ::testing::Values(Backend{"Fake", makeFakeWorld},
                                           Backend{"PulseAudio", makePulseAudioWorld},
                                           Backend{"PipeWire", makePipeWireWorld}),
                         [](const auto& backend) { return backend.param.name; });
