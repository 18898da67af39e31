#pragma once

#include "TargetPrograms.h"

#include <base/Scheduler.h>
#include <insertion/PasteTable.h>
#include <insertion/TextInserter.h>
#include <platform/fake/FakeFocusedElement.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/linux/session/X11Text.h>
#include <support/VirtualDesktop.h>

#include <memory>

namespace tulvane::bench {

/// A virtual desktop with a text view in front, and the inserter that brings texts into it. Main thread.
struct InsertionDesk {
    test::VirtualDesktop desktop{{.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                  .sessionBus = test::VirtualDesktop::SessionBus::own,
                                  .openboxKeys = {}}};
    EventLoopScheduler scheduler;
    std::unique_ptr<X11Text> text = X11Text::open(desktop.display().toLocal8Bit(), pasteTable({}), scheduler);
    FakeFocusedElements elements;
    FakePrivacyPermissions permissions;
    TextInserter inserter{{text->pasteboards(), text->keys(), elements, permissions, scheduler}};
    std::unique_ptr<test::TargetProgram> target = test::startTarget(test::Target::gtkTextView, desktop);
};

} // namespace tulvane::bench
