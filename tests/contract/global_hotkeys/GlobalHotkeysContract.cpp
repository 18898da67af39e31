#include "HotkeysBackend.h"

#include <hotkeys/FreeCombination.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Token = std::unique_ptr<GlobalHotkeys::Registration>;

constexpr HotkeyId first{0x41424344, 1};
constexpr HotkeyId second{0x41424344, 2};
constexpr HotkeyId mark{0x41424344, 99};
constexpr KeyCombination altSpace{49, carbon::option};
constexpr KeyCombination controlAltV{9, carbon::control | carbon::option};
constexpr KeyCombination f9{101, 0};

class Fixture {
public:
    explicit Fixture(const BackendFactory& factory) : m_backend(factory.make())
    {
        hotkeys().setEventHandler([this](const HotkeyEvent& event) {
            EXPECT_EQ(event.source, HotkeyEvent::Source::hotkey);
            EXPECT_EQ(event.id.signature, first.signature);
            if (event.kind == HotkeyEventKind::repeated)
                ++m_repeats;
            else
                m_told.push_back({event.id.id, event.kind == HotkeyEventKind::pressed});
            return HotkeyDelivery::handled;
        });
        m_mark = take(mark, f9);
    }
    [[nodiscard]] HotkeysBackend& backend() { return *m_backend; }
    [[nodiscard]] GlobalHotkeys& hotkeys() { return m_backend->hotkeys(); }
    [[nodiscard]] Token take(HotkeyId id, const KeyCombination& combination)
    {
        auto registration = hotkeys().registerHotkey(id, combination);
        EXPECT_TRUE(registration);
        return registration ? std::move(*registration) : nullptr;
    }
    /// Every event until now: the mark's own key comes last, so nothing is still on its way.
    [[nodiscard]] std::vector<std::pair<quint32, bool>> told()
    {
        m_backend->press(f9);
        m_backend->release(f9);
        const std::pair<quint32, bool> last{mark.id, false};
        EXPECT_TRUE(waitUntil([&] { return !m_told.empty() && m_told.back() == last; }));
        auto told = std::exchange(m_told, {});
        std::erase_if(told, [](const auto& event) { return event.first == mark.id; });
        return told;
    }
    [[nodiscard]] int repeats() const { return m_repeats; }

private:
    std::unique_ptr<HotkeysBackend> m_backend;
    Token m_mark;
    std::vector<std::pair<quint32, bool>> m_told;
    int m_repeats = 0;
};

constexpr std::pair<quint32, bool> firstDown{1, true};
constexpr std::pair<quint32, bool> firstUp{1, false};
constexpr std::pair<quint32, bool> secondDown{2, true};
constexpr std::pair<quint32, bool> secondUp{2, false};

} // namespace

TEST_P(GlobalHotkeysContract, IsSupportedHere)
{
    Fixture fixture(GetParam());
    EXPECT_TRUE(fixture.hotkeys().support());
}

TEST_P(GlobalHotkeysContract, TellsBothEdgesUnderTheId)
{
    Fixture fixture(GetParam());
    const Token one = fixture.take(first, altSpace);
    const Token two = fixture.take(second, controlAltV);
    for (int round = 0; round < 3; ++round) {
        fixture.backend().press(altSpace);
        fixture.backend().release(altSpace);
        fixture.backend().press(controlAltV);
        fixture.backend().release(controlAltV);
        EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp, secondDown, secondUp));
    }
}

TEST_P(GlobalHotkeysContract, TheReleaseComesWhicheverKeyGoesUpFirst)
{
    Fixture fixture(GetParam());
    const Token token = fixture.take(first, controlAltV);
    fixture.backend().press(controlAltV);
    fixture.backend().releaseModifiersFirst(controlAltV);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, OtherModifiersAreOtherCombinations)
{
    Fixture fixture(GetParam());
    const Token token = fixture.take(first, altSpace);
    for (const quint32 modifiers : {quint32{0}, carbon::shift, carbon::control, carbon::command,
                                    carbon::option | carbon::shift, carbon::option | carbon::control}) {
        fixture.backend().press({49, modifiers});
        fixture.backend().release({49, modifiers});
    }
    EXPECT_THAT(fixture.told(), IsEmpty());
}

TEST_P(GlobalHotkeysContract, AHeldKeyIsToldOnceAndItsRepeatsAsSuch)
{
    Fixture fixture(GetParam());
    const Token token = fixture.take(first, altSpace);
    fixture.backend().press(altSpace);
    fixture.backend().awaitRepeats(altSpace, [&] { return fixture.repeats(); }, 50);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, WhatIsDroppedIsHeardNoMore)
{
    Fixture fixture(GetParam());
    Token token = fixture.take(first, altSpace);
    token.reset();
    fixture.backend().press(altSpace);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), IsEmpty());
    token = fixture.take(second, altSpace);
    fixture.backend().press(altSpace);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), ElementsAre(secondDown, secondUp));
}

TEST_P(GlobalHotkeysContract, APressThatHasBegunGetsItsRelease)
{
    Fixture fixture(GetParam());
    Token token = fixture.take(first, altSpace);
    fixture.backend().press(altSpace);
    fixture.backend().awaitRepeats(altSpace, [&] { return fixture.repeats(); }, 1);
    token.reset();
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, APressThatIsOnItsWayWhenItIsRegisteredAnewIsHeard)
{
    Fixture fixture(GetParam());
    Token token = fixture.take(first, altSpace);
    fixture.backend().press(altSpace);
    token.reset();
    token = fixture.take(first, altSpace);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, ACombinationOfAnotherProgramIsTaken)
{
    Fixture fixture(GetParam());
    fixture.backend().takeElsewhere(altSpace);
    const auto refused = fixture.hotkeys().registerHotkey(first, altSpace);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind(), HotkeyError::Kind::taken);
    EXPECT_NE(refused.error().code(), 0);
    EXPECT_THAT(fixture.hotkeys().symbolicHotkeys(altSpace),
                Contains(SymbolicHotkey{true, altSpace, fixture.backend().elsewhereTitle()}));
    EXPECT_THAT(fixture.hotkeys().symbolicHotkeys(controlAltV), IsEmpty());
    ASSERT_FALSE(fixture.hotkeys().isFree(altSpace));
    EXPECT_EQ(fixture.hotkeys().isFree(altSpace).error(), refused.error());
    EXPECT_TRUE(fixture.hotkeys().isFree(controlAltV));

    fixture.backend().freeElsewhere(altSpace);
    EXPECT_THAT(fixture.hotkeys().symbolicHotkeys(altSpace), IsEmpty());
    const Token token = fixture.take(first, altSpace);
    fixture.backend().press(altSpace);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, ACombinationIsRegisteredOnce)
{
    Fixture fixture(GetParam());
    const Token token = fixture.take(first, altSpace);
    const auto again = fixture.hotkeys().registerHotkey(second, altSpace);
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().kind(), HotkeyError::Kind::taken);
    fixture.backend().press(altSpace);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, AFreeCombinationStaysFreeWhenItIsAskedFor)
{
    Fixture fixture(GetParam());
    EXPECT_TRUE(fixture.hotkeys().isFree(altSpace));
    fixture.backend().press(altSpace);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), IsEmpty());
    const Token token = fixture.take(first, altSpace);
    EXPECT_EQ(fixture.hotkeys().isFree(altSpace).error().kind(), HotkeyError::Kind::taken) << "by ourselves";
    EXPECT_EQ(fixture.hotkeys().isFree({1000, carbon::option}).error().kind(), HotkeyError::Kind::noSuchKey);
}

TEST_P(GlobalHotkeysContract, WhatIsOfferedInstead)
{
    Fixture fixture(GetParam());
    EXPECT_EQ(freeCombination(fixture.hotkeys()), altSpace);
    fixture.backend().takeElsewhere(altSpace);
    const auto offered = freeCombination(fixture.hotkeys());
    ASSERT_TRUE(offered);
    EXPECT_NE(*offered, altSpace);
    const Token token = fixture.take(first, *offered);
    fixture.backend().press(*offered);
    fixture.backend().release(*offered);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, AskingAboutACombinationChangesNothing)
{
    Fixture fixture(GetParam());
    const Token token = fixture.take(first, altSpace);
    EXPECT_THAT(fixture.hotkeys().symbolicHotkeys(altSpace), IsEmpty()) << "it is ours";
    fixture.backend().press(altSpace);
    fixture.backend().release(altSpace);
    EXPECT_THAT(fixture.told(), ElementsAre(firstDown, firstUp));
}

TEST_P(GlobalHotkeysContract, AKeyThatDoesNotExistIsRefused)
{
    Fixture fixture(GetParam());
    for (const quint32 code : {52U, 1000U, 0xFFFFFFFFU}) {
        const auto refused = fixture.hotkeys().registerHotkey(first, {code, carbon::option});
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error().kind(), HotkeyError::Kind::noSuchKey);
    }
}

TEST_P(GlobalHotkeysContract, AnotherKeyboardIsTold)
{
    Fixture fixture(GetParam());
    const Token token = fixture.take(first, altSpace);
    int changes = 0;
    fixture.hotkeys().setChangeHandler([&] { ++changes; });
    fixture.backend().changeKeyboard();
    EXPECT_TRUE(waitUntil([&] { return changes > 0; }));
}

TEST_P(GlobalHotkeysContract, ACombinationIsWrittenWithItsModifiers)
{
    Fixture fixture(GetParam());
    EXPECT_EQ(fixture.hotkeys().display(altSpace).caps.size(), 2);
    EXPECT_EQ(fixture.hotkeys().display(controlAltV).caps.size(), 3);
    EXPECT_EQ(fixture.hotkeys().display(f9).text(), QStringLiteral("F9"));
}

TEST_P(GlobalHotkeysContract, ATokenMayOutliveThePort)
{
    Fixture fixture(GetParam());
    Token token = fixture.take(first, altSpace);
    fixture.backend().end();
    token.reset();
}

} // namespace tulvane::test
