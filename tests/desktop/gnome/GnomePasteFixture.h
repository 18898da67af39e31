#pragma once

#include "GnomeFixture.h"

#include <platform/linux/remote/RemoteKeyPosting.h>
#include <platform/linux/x11/clipboard/BridgedPasteboards.h>

namespace tulvane::test {

/// The clipboard as a program on GNOME has it, and keys by whichever remote control the suite takes.
class GnomePasteTest : public GnomeTest {
protected:
    class UnknownFront final : public FrontPrograms {
    public:
        [[nodiscard]] FrontProgram current() override { return {}; }
    };

    void SetUp() override
    {
        GnomeTest::SetUp();
        if (!desktop)
            return;
        const QByteArray display = desktop->variable(QStringLiteral("DISPLAY")).toLocal8Bit();
        qputenv("XAUTHORITY", desktop->variable(QStringLiteral("XAUTHORITY")).toLocal8Bit());
        ASSERT_TRUE(waitUntil([&] { return (link = X11Connection::open(display)) != nullptr; }));
        keeper = SelectionOwner::start(display);
        ASSERT_NE(keeper, nullptr);
        pasteboards = std::make_unique<BridgedPasteboards>(*link, *keeper, scheduler,
                                                           std::make_shared<UnknownFront>(), PasteRules());
    }
    void pressBy(std::shared_ptr<RemoteDesktop> remote)
    {
        RemoteKeyPosting::Hooks hooks;
        hooks.isInFront = [this](const PasteTarget&) { return isInFront; };
        // As the session has them.
        hooks.isOffered = [this](const PasteTarget& target) { return pasteboards->isOffered(target); };
        hooks.isRead = [this](const PasteTarget& target) { return pasteboards->isRead(target); };
        hooks.pasting = [this](const PasteTarget& target) { pasteboards->expectReader(target); };
        keys = std::make_unique<RemoteKeyPosting>(std::move(remote), hooks);
    }
    [[nodiscard]] bool isRead() const
    {
        return pasteboards->general().reading() == Pasteboard::Reading::read;
    }

    std::unique_ptr<X11Connection> link;
    std::unique_ptr<SelectionOwner> keeper;
    EventLoopScheduler scheduler;
    std::unique_ptr<BridgedPasteboards> pasteboards;
    std::unique_ptr<RemoteKeyPosting> keys;
    bool isInFront = true;
};

} // namespace tulvane::test
