#pragma once

#include <platform/linux/storage/JsonUserDefaults.h>
#include <support/FakeClock.h>
#include <support/LogCapture.h>
#include <support/ScratchFolder.h>

#include <QDir>
#include <QList>

namespace tulvane::test {

/// A configuration folder, and programs that keep their preferences in it.
class DefaultsFolder {
public:
    static inline const QString domain = QStringLiteral("com.dunio.Tulvane");
    static inline const QString name = QStringLiteral("com.dunio.Tulvane.json");

    [[nodiscard]] JsonUserDefaults open() const { return {folder.path(), domain, clock}; }
    [[nodiscard]] QString path() const { return folder.file(name); }
    [[nodiscard]] QByteArray content() const { return folder.read(name); }
    void write(const QByteArray& content) const { folder.write(name, content); }
    /// What lies beside the file, the lock left out.
    [[nodiscard]] QStringList neighbours() const
    {
        QStringList names =
            QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
        names.removeAll(name);
        names.removeAll(QString(name + u".lock"));
        return names;
    }
    /// Everything that the preferences have told so far.
    [[nodiscard]] static QList<DefaultsError> troubles(JsonUserDefaults& defaults)
    {
        QList<DefaultsError> all;
        defaults.setTroubleHandler([&all](const DefaultsError& error) { all.append(error); });
        defaults.setTroubleHandler({});
        return all;
    }

    ScratchFolder folder;
    FakeClock clock;
};

} // namespace tulvane::test
