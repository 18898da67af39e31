#pragma once

#include <platform/fake/FakeStatusItem.h>
#include <platform/linux/desktop/shell/TrayStatusItem.h>
#include <support/tray/TrayHost.h>

#include <optional>

namespace tulvane::test {

class VirtualDesktop;

/// The desktop that this process's icons are on.
[[nodiscard]] VirtualDesktop& statusDesktop();

/// A line of a menu as the user sees it.
struct SeenLine {
    QString text;
    bool canBeClicked = false;
    bool isChosen = false;

    [[nodiscard]] friend bool operator==(const SeenLine&, const SeenLine&) = default;
};

/// The fake, read as a user reads a bar.
class FakeBar {
public:
    [[nodiscard]] StatusItem& item() { return m_item; }
    [[nodiscard]] bool hasIcon() const { return !m_item.symbol().isEmpty(); }
    /// Something that differs where the pictures differ.
    [[nodiscard]] QString picture() const { return m_item.symbol(); }
    [[nodiscard]] QString description() const { return m_item.description(); }
    /// From top to bottom; a separator has the text "-". `path`: the lines that lead to the menu.
    [[nodiscard]] QList<SeenLine> lines(const QStringList& path = {}) const;
    /// The last one of `path` is the line, those before it lead to its menu.
    void click(const QStringList& path) const;
    void open() const { m_item.open(); }

private:
    FakeStatusItem m_item;
};

/// A bar of the desktop's, with the real icon in it.
class BusBar {
public:
    BusBar();
    BusBar(const BusBar&) = delete;
    BusBar& operator=(const BusBar&) = delete;
    ~BusBar();

    [[nodiscard]] StatusItem& item() { return *m_item; }
    [[nodiscard]] bool hasIcon() const;
    [[nodiscard]] QString picture() const;
    [[nodiscard]] QString description() const;
    [[nodiscard]] QList<SeenLine> lines(const QStringList& path = {}) const;
    void click(const QStringList& path) const;
    void open() const;

private:
    std::optional<TrayStatusItem> m_item;
};

} // namespace tulvane::test
