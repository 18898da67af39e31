#include "DeviceWorld.h"
#include "X11Peers.h"

#include <platform/fake/FakeKeyPosting.h>
#include <platform/fake/FakePasteboard.h>
#include <platform/linux/session/X11Text.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace tulvane {

namespace {

constexpr int xKeyV = 55;
constexpr int xKeySpace = 65;

class FakeWorld {
public:
    KeyPosting& keys() { return m_keys; }
    QStringList typed()
    {
        QStringList typed;
        for (const FakeKeyPosting::Stroke stroke : m_keys.posted())
            typed.append(stroke == FakeKeyPosting::Stroke::paste ? u"paste"_qs : u"space"_qs);
        return typed;
    }
    PasteTarget front() { return FakePasteboards::editor; }
    void switchWindow() { m_keys.windowInFront = FakePasteboards::xterm.window; }
    void breakDown()
    {
        m_keys.failPastes();
        m_keys.failSpacesAfter(0);
    }

private:
    FakeKeyPosting m_keys;
};

class X11World {
public:
    X11World() { m_front.takeFocus(); }
    KeyPosting& keys() { return m_text->keys(); }
    PasteTarget front() { return m_text->pasteboards().pasteTarget(); }
    void switchWindow() { m_other.takeFocus(); }
    QStringList typed()
    {
        m_front.catchUp();
        QStringList typed;
        m_other.catchUp();
        for (const test::HeardKey& key : m_front.keys() + m_other.keys()) {
            if (key.down && key.key == xKeyV && key.state == XCB_MOD_MASK_CONTROL)
                typed.append(u"paste"_qs);
            else if (key.down && key.key == xKeySpace && key.state == 0)
                typed.append(u"space"_qs);
        }
        return typed;
    }
    void breakDown()
    {
        m_desktop.killServer();
        (void)test::waitUntil([&] { return m_front.link().isBroken(); });
    }

private:
    test::VirtualDesktop m_desktop;
    EventLoopScheduler m_scheduler;
    test::X11Peer m_other{m_desktop.display()};
    test::X11Peer m_front{m_desktop.display()};
    std::unique_ptr<X11Text> m_text = X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
};

template <class World>
class KeyPostingContract : public testing::Test {
protected:
    void SetUp() override
    {
        if constexpr (requires { World::desktopKind; }) {
            TULVANE_NEEDS(World::desktopKind);
        }
        m_world.emplace();
    }
    bool paste() { return test::await(m_world->keys().paste(m_world->front())); }
    bool type(int spaces) { return test::await(m_world->keys().typeSpaces(spaces)); }
    std::optional<World> m_world; ///< made once it is known that its packages are there
};

using Worlds = testing::Types<FakeWorld, X11World, test::SwayKeysWorld, test::KWinKeysWorld>;
TYPED_TEST_SUITE(KeyPostingContract, Worlds);

} // namespace

TYPED_TEST(KeyPostingContract, WhatIsPostedArrivesOnceAndInOrder)
{
    EXPECT_TRUE(this->paste());
    EXPECT_TRUE(this->type(2));
    EXPECT_TRUE(this->type(0));
    EXPECT_TRUE(this->paste());
    EXPECT_THAT(this->m_world->typed(),
                testing::ElementsAre(u"paste"_qs, u"space"_qs, u"space"_qs, u"paste"_qs));
}

TYPED_TEST(KeyPostingContract, PostsNothingWhenTheTargetIsNoLongerInFront)
{
    const PasteTarget target = this->m_world->front();
    this->m_world->switchWindow();
    EXPECT_FALSE(test::await(this->m_world->keys().paste(target)));
    EXPECT_THAT(this->m_world->typed(), testing::IsEmpty());
}

TYPED_TEST(KeyPostingContract, SaysWhenItCannotPost)
{
    const PasteTarget target = this->m_world->front();
    this->m_world->breakDown();
    EXPECT_FALSE(test::await(this->m_world->keys().paste(target)));
    EXPECT_FALSE(this->type(1));
}

} // namespace tulvane
