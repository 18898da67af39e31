#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KdeKeyboard.h>

#include <QFile>

#include <utility>

namespace tulvane {

namespace {

/// A setting of the file's [Layout] group.
QString settingIn(const QString& file, QLatin1StringView name)
{
    bool isLayout = false;
    for (const QString& line : file.split(u'\n')) {
        if (line.startsWith(u'['))
            isLayout = line.trimmed() == QLatin1StringView("[Layout]");
        else if (isLayout && line.startsWith(name) && line.sliced(name.size()).startsWith(u'='))
            return line.sliced(name.size() + 1).trimmed();
    }
    return {};
}

} // namespace

KdeKeyboard::KdeKeyboard(std::shared_ptr<LastingBus> bus, QString configHome)
    : m_bus(std::move(bus)),
      m_file(std::move(configHome) + QStringLiteral("/kxkbrc"))
{
    read();
    listen();
    connect(m_bus.get(), &LastingBus::returned, this, [this] {
        listen();
        reload(); // no change was reported meanwhile
    });
}

void KdeKeyboard::listen()
{
    m_bus->connection().connect({}, QStringLiteral("/Layouts"), QStringLiteral("org.kde.keyboard"),
                                QStringLiteral("reloadConfig"), this, SLOT(reload()));
}

void KdeKeyboard::read()
{
    QFile file(m_file);
    const QString text = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    const bool isUsed = settingIn(text, QLatin1StringView("Use")) != QLatin1StringView("false");
    const QString layouts = isUsed ? settingIn(text, QLatin1StringView("LayoutList")) : QString();
    const QString variants = isUsed ? settingIn(text, QLatin1StringView("VariantList")) : QString();
    m_names = layouts + u'|' + variants;
    auto layout = XkbKeymap::fromNames(layouts, variants);
    // One that is not installed is no reason to have no keys at all.
    m_layout = layout ? std::move(layout) : XkbKeymap::fromNames({});
}

void KdeKeyboard::reload()
{
    const QString before = m_names;
    read();
    if (m_names != before)
        Q_EMIT changed();
}

} // namespace tulvane
