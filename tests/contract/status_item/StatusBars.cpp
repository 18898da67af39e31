#include "StatusBars.h"

#include <support/Paths.h>
#include <support/VirtualDesktop.h>

#include <QJsonDocument>

namespace tulvane::test {

namespace {

/// One bar for the whole process: the toolkit looks for one only once.
TrayHost& bar()
{
    static TrayHost host(statusDesktop());
    return host;
}

/// What a bar shows of a line: a single underscore marks the next letter, two are one, and a character
/// without width is not seen.
QString seen(const QString& label)
{
    QString text;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label[i] == u'_' && (++i >= label.size() || label[i] != u'_'))
            --i;
        else if (label[i] != u'\u200B')
            text += label[i];
    }
    return text;
}

QJsonArray menuAt(const QStringList& path)
{
    QJsonArray lines = bar().menu();
    for (const QString& text : path) {
        QJsonArray inner;
        for (const QJsonValue& line : lines) {
            if (seen(line[QStringLiteral("label")].toString()) == text)
                inner = line[QStringLiteral("children")].toArray();
        }
        lines = inner;
    }
    return lines;
}

QList<MenuEntry> entriesAt(QList<MenuEntry> entries, const QStringList& path)
{
    for (const QString& text : path) {
        QList<MenuEntry> inner;
        for (const MenuEntry& entry : entries) {
            if (entry.text == text)
                inner = entry.entries;
        }
        entries = inner;
    }
    return entries;
}

} // namespace

QList<SeenLine> FakeBar::lines(const QStringList& path) const
{
    using Kind = MenuEntry::Kind;
    QList<SeenLine> list;
    for (const MenuEntry& entry : entriesAt(m_item.entries(), path)) {
        const bool isLine = entry.kind != Kind::separator;
        list.append({isLine ? entry.text : QStringLiteral("-"), isLine && entry.kind != Kind::label,
                     entry.isChecked});
    }
    return list;
}

void FakeBar::click(const QStringList& path) const
{
    for (const MenuEntry& entry : entriesAt(m_item.entries(), path.first(path.size() - 1))) {
        if (entry.text == path.last())
            entry.activate();
    }
}

BusBar::BusBar()
{
    std::ignore = bar();
    m_item.emplace(sourceFolder() + QStringLiteral("/resources/symbols"), QStringList{}, nullptr);
}

BusBar::~BusBar()
{
    m_item.reset();
    bar().waitUntilGone();
}

bool BusBar::hasIcon() const
{
    return bar().hasIcon();
}

QString BusBar::picture() const
{
    const QJsonArray pictures = bar().icon()[QStringLiteral("IconPixmap")].toArray();
    return QString::fromUtf8(QJsonDocument(pictures).toJson());
}

QString BusBar::description() const
{
    return bar().icon()[QStringLiteral("ToolTip")].toArray().at(2).toString();
}

QList<SeenLine> BusBar::lines(const QStringList& path) const
{
    QList<SeenLine> list;
    for (const QJsonValue& line : menuAt(path)) {
        const bool isLine = line[QStringLiteral("type")] != QStringLiteral("separator");
        list.append({isLine ? seen(line[QStringLiteral("label")].toString()) : QStringLiteral("-"),
                     isLine && line[QStringLiteral("enabled")].toBool(),
                     line[QStringLiteral("on")].toBool()});
    }
    return list;
}

void BusBar::click(const QStringList& path) const
{
    for (const QJsonValue& line : menuAt(path.first(path.size() - 1))) {
        if (seen(line[QStringLiteral("label")].toString()) == path.last())
            bar().clickNumber(line[QStringLiteral("id")].toInt());
    }
}

void BusBar::open() const
{
    bar().open();
}

} // namespace tulvane::test
