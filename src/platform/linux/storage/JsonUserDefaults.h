#pragma once

#include <base/AtomicFile.h>
#include <base/Clock.h>
#include <platform/linux/storage/PreferencesDocument.h>
#include <ports/UserDefaults.h>

#include <QList>
#include <QString>
#include <QVariantMap>

#include <chrono>
#include <optional>

namespace tulvane {

/// User defaults as one JSON file per domain in a folder: `<folder>/<domain>.json`.
///
/// Each write takes a lock beside the file, reads the file again, changes the one key and replaces the file
/// in one step. A read looks at the file's stamp and reads it again when that has moved. A file that is not
/// a JSON object is renamed to `<name>.damaged-<date>-<time>` before anything else is written, and what was
/// read from it before is written in its place; one that may not be read is left alone, and so is a file that
/// may not be moved. A symbolic link stays one: the file that it leads to is written. A file with nothing but
/// blanks in it counts as an empty domain.
class JsonUserDefaults final : public UserDefaults {
public:
    /// `folder` is made on the first write. `clock` names damaged files and outlives this object.
    JsonUserDefaults(const QString& folder, const QString& domain, const Clock& clock);

    /// `$XDG_CONFIG_HOME`, or `~/.config`.
    [[nodiscard]] static QString standardFolder();

    [[nodiscard]] QVariant value(const QString& key) const override;
    Result<void, DefaultsError> set(const QString& key, const QVariant& value) override;
    Result<void, DefaultsError> remove(const QString& key) override;
    [[nodiscard]] Result<QVariantMap, DefaultsError> domain(const QString& name) const override;
    void setTroubleHandler(const TroubleHandler& handler) override;

    /// The domain's file, as named; it may be a link and need not exist.
    [[nodiscard]] QString filePath() const { return m_path; }
    /// How long a write waits while another process writes; for tests.
    void setLockTimeout(std::chrono::milliseconds timeout) { m_lockTimeout = timeout; }

private:
    void refresh() const;
    void read() const;
    void lookCloser() const;
    void use(Result<PreferencesDocument, DefaultsError> read) const;
    [[nodiscard]] Result<PreferencesDocument, DefaultsError> readUnderLock() const;
    [[nodiscard]] Result<void, DefaultsError> write(const QString& key, const QVariant& value);
    [[nodiscard]] Result<void, QString> writeFile(const QString& key);
    [[nodiscard]] Result<QString, QString> setAside(const QString& file) const;
    [[nodiscard]] QString lockPath() const;
    void deliver() const;

    QString m_folder;
    QString m_path;
    const Clock& m_clock;
    std::chrono::milliseconds m_lockTimeout{5000};
    TroubleHandler m_troubleHandler;
    /// What failed writes left, to go out with the next one; an invalid value is a removal.
    QVariantMap m_unsaved;
    // A read is const to its caller, though it may find that another process has written.
    mutable PreferencesDocument m_document;
    mutable std::optional<FileStamp> m_stamp;
    mutable bool m_hasRead = false;
    mutable QList<DefaultsError> m_untold;
};

} // namespace tulvane
