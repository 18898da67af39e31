#include "X11Peers.h"

#include <platform/fake/FakeKeyPosting.h>
#include <platform/linux/session/X11Text.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
        for (const auto& [key, flags] : m_keys.posted()) {
            if (key == KeyPosting::keyV && flags == KeyPosting::command)
                typed.append(u"paste"_qs);
            else if (key == KeyPosting::keySpace && flags == KeyPosting::noFlags)
                typed.append(u"space"_qs);
        }
        return typed;
    }
    void breakDown() { m_keys.fail(KeyPosting::keyV); }

private:
    FakeKeyPosting m_keys;
};

class X11World {
public:
    X11World() { m_front.takeFocus(); }
    KeyPosting& keys() { return m_text->keys(); }
    QStringList typed()
    {
        m_front.catchUp();
        QStringList typed;
        for (const test::HeardKey& key : m_front.keys()) {
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
    test::X11Peer m_front{m_desktop.display()};
    std::unique_ptr<X11Text> m_text = X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
};

template <class World>
class KeyPostingContract : public testing::Test {
protected:
    bool post(int keyCode, quint32 flags) { return test::await(m_world.keys().post(keyCode, flags)); }
    World m_world;
};

using Worlds = testing::Types<FakeWorld, X11World>;
TYPED_TEST_SUITE(KeyPostingContract, Worlds);

} // namespace

TYPED_TEST(KeyPostingContract, WhatIsPostedArrivesOnceAndInOrder)
{
    EXPECT_TRUE(this->post(KeyPosting::keyV, KeyPosting::command));
    EXPECT_TRUE(this->post(KeyPosting::keySpace, KeyPosting::noFlags));
    EXPECT_TRUE(this->post(KeyPosting::keySpace, KeyPosting::noFlags));
    EXPECT_TRUE(this->post(KeyPosting::keyV, KeyPosting::command));
    EXPECT_THAT(this->m_world.typed(),
                testing::ElementsAre(u"paste"_qs, u"space"_qs, u"space"_qs, u"paste"_qs));
}

TYPED_TEST(KeyPostingContract, SaysWhenItCannotPost)
{
    this->m_world.breakDown();
    EXPECT_FALSE(this->post(KeyPosting::keyV, KeyPosting::command));
}

} // namespace tulvane
