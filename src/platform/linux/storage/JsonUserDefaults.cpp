#include <base/FileLock.h>
#include <base/Log.h>
#include <base/PrivateFolder.h>
#include <platform/linux/storage/JsonUserDefaults.h>
#include <ports/DefaultsValue.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <utility>

namespace tulvane {

namespace {

// Far above any set of preferences, and small enough to be read whole.
constexpr qint64 largestFile = qint64{16} << 20;

QString domainFile(const QString& folder, const QString& domain)
{
    return folder + u'/' + domain + QStringLiteral(".json");
}

} // namespace

JsonUserDefaults::JsonUserDefaults(const QString& folder, const QString& domain, const Clock& clock)
    : m_folder(folder),
      m_path(domainFile(folder, domain)),
      m_clock(clock)
{
    refresh();
}

QString JsonUserDefaults::standardFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

QVariant JsonUserDefaults::value(const QString& key) const
{
    refresh();
    const auto unsaved = m_unsaved.constFind(key);
    return unsaved != m_unsaved.cend() ? *unsaved : m_document.value(key);
}

Result<void, DefaultsError> JsonUserDefaults::set(const QString& key, const QVariant& value)
{
    const std::optional<QVariant> storable = storableValue(value);
    if (!storable) {
        qCCritical(lcSettings, "No preference has the type of the value for %ls", qUtf16Printable(key));
        return failure(DefaultsError::notStorable(key));
    }
    return write(key, *storable);
}

Result<void, DefaultsError> JsonUserDefaults::remove(const QString& key)
{
    return write(key, QVariant());
}

Result<QVariantMap, DefaultsError> JsonUserDefaults::domain(const QString& name) const
{
    const QString path = domainFile(m_folder, name);
    if (name.contains(u'/'))
        return QVariantMap();
    const Result<QByteArray, FileFault> text = readFile(path, largestFile);
    if (!text && text.error().kind == FileFault::Kind::missing)
        return QVariantMap();
    if (!text)
        return failure(DefaultsError::unreadable(path, text.error().reason));
    const Result<PreferencesDocument, QString> document = PreferencesDocument::parse(*text);
    if (!document)
        return failure(DefaultsError::unreadable(path, document.error()));
    return document->values();
}

void JsonUserDefaults::setTroubleHandler(const TroubleHandler& handler)
{
    m_troubleHandler = handler;
    deliver();
}

/// Reads the file again if it is another one than last time, or has changed.
void JsonUserDefaults::refresh() const
{
    // Taken before the reading: what changes in between is then read once more, never missed.
    const std::optional<FileStamp> stamp = fileStamp(m_path);
    if (m_hasRead && stamp == m_stamp)
        return;
    m_hasRead = true;
    m_stamp = stamp;
    read();
    deliver();
}

void JsonUserDefaults::read() const
{
    const Result<QByteArray, FileFault> text = readFile(m_path, largestFile);
    if (!text && text.error().kind == FileFault::Kind::missing) {
        use(PreferencesDocument());
        return;
    }
    if (!text) {
        use(failure(DefaultsError::unreadable(m_path, text.error().reason)));
        return;
    }
    Result<PreferencesDocument, QString> document = PreferencesDocument::parse(*text);
    if (document)
        use(std::move(*document));
    else
        lookCloser();
}

/// The file is damaged: sets it aside, unless another process has done so meanwhile.
void JsonUserDefaults::lookCloser() const
{
    const Result<FileLock, LockError> lock = FileLock::acquire(lockPath(), m_lockTimeout);
    if (!lock) {
        use(failure(DefaultsError::damagedInPlace(m_path, lock.error().reason())));
        return;
    }
    use(readUnderLock());
    m_stamp = fileStamp(m_path);
}

void JsonUserDefaults::use(Result<PreferencesDocument, DefaultsError> read) const
{
    if (!read) {
        qCCritical(lcSettings, "Cannot use the settings file %ls: %ls", qUtf16Printable(m_path),
                   qUtf16Printable(read.error().detail()));
        // What was read before stays in force; a file that was never read counts as empty.
        m_untold.append(read.error());
        return;
    }
    m_document = std::move(*read);
}

Result<PreferencesDocument, DefaultsError> JsonUserDefaults::readUnderLock() const
{
    const QString file = linkTarget(m_path);
    const Result<QByteArray, FileFault> text = readFile(file, largestFile);
    if (!text && text.error().kind == FileFault::Kind::missing)
        return PreferencesDocument();
    if (!text)
        return failure(DefaultsError::unreadable(m_path, text.error().reason));
    Result<PreferencesDocument, QString> document = PreferencesDocument::parse(*text);
    if (document)
        return std::move(*document);
    const Result<QString, QString> aside = setAside(file);
    if (!aside)
        return failure(DefaultsError::damagedInPlace(m_path, aside.error()));
    qCCritical(lcSettings, "The settings file %ls is damaged (%ls); set aside as %ls",
               qUtf16Printable(m_path), qUtf16Printable(document.error()), qUtf16Printable(*aside));
    if (m_document.isEmpty()) {
        m_untold.append(DefaultsError::damaged(m_path, *aside));
        return PreferencesDocument();
    }
    // What was read before the damage holds, and goes back at once: the next start must find it.
    m_untold.append(DefaultsError::damagedWhileRunning(m_path, *aside));
    const Result<void, QString> restored = replaceFile(m_path, m_document.text());
    if (!restored)
        m_untold.append(DefaultsError::notWritten(m_path, restored.error()));
    return m_document.copy();
}

Result<QString, QString> JsonUserDefaults::setAside(const QString& file) const
{
    const QString base =
        file + QStringLiteral(".damaged-") + m_clock.now().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString aside = base;
    for (int number = 2; QFileInfo::exists(aside); ++number)
        aside = base + u'-' + QString::number(number);
    QFile damaged(file);
    // Renaming never replaces a file that has come to that name meanwhile.
    if (!damaged.rename(aside))
        return failure(damaged.errorString());
    return aside;
}

Result<void, DefaultsError> JsonUserDefaults::write(const QString& key, const QVariant& value)
{
    m_unsaved.insert(key, value);
    const Result<void, QString> written = writeFile(key);
    deliver();
    if (written)
        return {};
    qCCritical(lcSettings, "Could not save %ls to %ls: %ls", qUtf16Printable(key), qUtf16Printable(m_path),
               qUtf16Printable(written.error()));
    return failure(DefaultsError::notWritten(m_path, written.error()));
}

/// Brings `key` and every other unsaved key into the file as it is now, so that another process's keys stay.
Result<void, QString> JsonUserDefaults::writeFile(const QString& key)
{
    makePrivateFolder(m_folder);
    const Result<FileLock, LockError> lock = FileLock::acquire(lockPath(), m_lockTimeout);
    if (!lock)
        return failure(lock.error().reason());
    Result<PreferencesDocument, DefaultsError> document = readUnderLock();
    if (!document)
        return failure(document.error().detail());
    for (auto item = m_unsaved.cbegin(); item != m_unsaved.cend(); ++item) {
        if (item.value().isValid())
            document->set(item.key(), item.value());
        else
            document->remove(item.key());
    }
    const QByteArray text = document->text();
    if (text.size() > largestFile) {
        // It could not be read again; without this value, the next ones can still be stored.
        m_unsaved.remove(key);
        return failure(qt_error_string(EFBIG));
    }
    const Result<void, QString> replaced = replaceFile(m_path, text);
    if (!replaced)
        return failure(replaced.error());
    m_document = std::move(*document);
    m_stamp = fileStamp(m_path);
    m_unsaved.clear();
    return {};
}

QString JsonUserDefaults::lockPath() const
{
    // Beside the real file, so that two links to one file share one lock.
    return linkTarget(m_path) + QStringLiteral(".lock");
}

/// Hands trouble on once no lock is held, so that a handler may read and write preferences.
void JsonUserDefaults::deliver() const
{
    if (!m_troubleHandler)
        return;
    for (const DefaultsError& trouble : std::exchange(m_untold, {}))
        m_troubleHandler(trouble);
}

} // namespace tulvane
