#include <app/program/FolderMerge.h>
#include <app/program/Migration.h>
#include <base/Log.h>
#include <ports/UserDefaults.h>

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace tulvane {

namespace {

std::filesystem::path pathOf(const QString& file)
{
    return QFile::encodeName(file).toStdString();
}

} // namespace

QString Migration::standardParent()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

Migration::Migration(UserDefaults& defaults, const QString& parent) : m_defaults(defaults), m_parent(parent)
{
}

void Migration::run()
{
    if (m_defaults.value(doneKey).toBool())
        return;
    copyPreferences();
    moveFolder();
    // Also after a failure: a second try could bring back what the user has removed since. Where this cannot
    // be written, the preferences report it themselves.
    static_cast<void>(m_defaults.set(doneKey, true));
}

void Migration::copyPreferences()
{
    const auto old = m_defaults.domain(oldDomain);
    if (!old) {
        qCCritical(lcApp).noquote() << "Could not read the preferences of" << oldDomain + QStringLiteral(":")
                                    << old.error().description();
        return;
    }
    if (old->isEmpty())
        return;
    qsizetype copied = 0;
    for (auto entry = old->cbegin(); entry != old->cend(); ++entry) {
        if (!m_defaults.contains(entry.key()) && m_defaults.set(entry.key(), entry.value()))
            ++copied;
    }
    qCInfo(lcApp).noquote() << "Migrated" << copied << "preference(s) from" << oldDomain;
}

void Migration::moveFolder() const
{
    const QString from = m_parent + u'/' + oldFolder;
    const QString to = m_parent + u'/' + newFolder;
    // Without a folder for data there is nothing to look into; a file of that name is none of ours.
    if (m_parent.isEmpty() || !QFileInfo(from).isDir())
        return;
    const QFileInfo present(to);
    const bool merges = present.exists() || present.isSymLink();
    const auto done = merges ? mergeFolder(pathOf(from), pathOf(to), pathOf(modelsFolder))
                             : moveItem(pathOf(from), pathOf(to));
    if (!done)
        qCCritical(lcApp).noquote() << "Could not migrate Application Support folder:" << done.error();
    else if (merges)
        qCInfo(lcApp).noquote() << "Merged" << from << "into" << to;
    else
        qCInfo(lcApp).noquote() << "Moved" << from << "→" << to;
}

} // namespace tulvane
