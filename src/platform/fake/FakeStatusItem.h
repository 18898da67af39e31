#pragma once

#include <ports/StatusItem.h>

#include <QStringList>

#include <stdexcept>
#include <utility>

namespace tulvane {

/// A place in a bar that the test reads and clicks.
class FakeStatusItem final : public StatusItem {
public:
    void setSymbol(const QString& name) override
    {
        m_symbols.append(name);
        if (m_shownHandler)
            m_shownHandler();
    }
    void setDescription(const QString& text) override { m_description = text; }
    void setMenu(const QList<MenuEntry>& entries) override
    {
        m_entries = entries;
        ++m_menus;
    }
    void setOpeningHandler(std::function<void()> handler) override { m_opening = std::move(handler); }

    [[nodiscard]] bool isShown() const override { return m_hasBar && !m_symbols.isEmpty(); }
    void setShownHandler(std::function<void()> handler) override { m_shownHandler = std::move(handler); }

    /// The bar goes, or comes back.
    void setBar(bool present)
    {
        m_hasBar = present;
        if (m_shownHandler)
            m_shownHandler();
    }
    /// The user opens the menu.
    void open() const
    {
        if (m_opening)
            m_opening();
    }
    /// The line of that name; in a submenu as "language/en". Throws std::out_of_range where there is none.
    [[nodiscard]] MenuEntry entry(const QString& path) const
    {
        QList<MenuEntry> entries = m_entries;
        MenuEntry found;
        for (const QString& name : path.split(u'/')) {
            found = named(entries, name);
            entries = found.entries;
        }
        return found;
    }
    [[nodiscard]] bool has(const QString& name) const { return names().contains(name); }
    /// The user clicks the line of that name.
    void click(const QString& path) const { entry(path).activate(); }

    /// The icons so far, oldest first.
    [[nodiscard]] QStringList symbols() const { return m_symbols; }
    [[nodiscard]] QString symbol() const { return m_symbols.isEmpty() ? QString() : m_symbols.last(); }
    [[nodiscard]] QString description() const { return m_description; }
    [[nodiscard]] QList<MenuEntry> entries() const { return m_entries; }
    /// Names from top to bottom; a separator's is "-".
    [[nodiscard]] QStringList names() const
    {
        QStringList list;
        for (const MenuEntry& one : m_entries)
            list.append(one.kind == MenuEntry::Kind::separator ? QStringLiteral("-") : one.name);
        return list;
    }
    /// How often the menu was set.
    [[nodiscard]] int menus() const { return m_menus; }

private:
    [[nodiscard]] static MenuEntry named(const QList<MenuEntry>& entries, const QString& name)
    {
        for (const MenuEntry& one : entries) {
            if (one.name == name)
                return one;
        }
        throw std::out_of_range("the menu has no line " + name.toStdString());
    }

    QStringList m_symbols;
    QString m_description;
    QList<MenuEntry> m_entries;
    int m_menus = 0;
    std::function<void()> m_opening;
    std::function<void()> m_shownHandler;
    bool m_hasBar = true;
};

} // namespace tulvane
