#pragma once

#include <ports/StatusItem.h>

namespace tulvane {

/// Of a desktop without status icons. Main thread.
class NullStatusItem final : public StatusItem {
public:
    void setSymbol(const QString& /*name*/) override {}
    void setDescription(const QString& /*text*/) override {}
    void setMenu(const QList<MenuEntry>& /*entries*/) override {}
    void setOpeningHandler(std::function<void()> /*handler*/) override {}
    [[nodiscard]] bool isShown() const override { return false; }
    void setShownHandler(std::function<void()> /*handler*/) override {}
};

} // namespace tulvane
