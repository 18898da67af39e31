#pragma once

#include <QObject>
#include <QVariantList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

class QQmlPropertyMap;
#include <functional>

namespace tulvane {

class AppSettings;
class LoginItem;
class StatusItem;
class Windows;

/// The Settings page: what the preferences are, what may be chosen, and what a change brings with it beyond
/// its being stored. Plain switches and numbers are bound to `settings` itself. Main thread.
class PreferencesViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// The value of every preference by its key, to be read and written
    Q_PROPERTY(QObject* settings READ settings CONSTANT)
    /// Of every preference by its key: `title`, and of a number `from`, `to` and `step`
    Q_PROPERTY(QVariantMap rows READ rows CONSTANT)
    // Of each choice: the options (`value`, `title`) and the value chosen now.
    Q_PROPERTY(QVariantList languages READ languages CONSTANT)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(QVariantList insertionMethods READ insertionMethods CONSTANT)
    Q_PROPERTY(
        QString insertionMethod READ insertionMethod WRITE setInsertionMethod NOTIFY insertionMethodChanged)
    Q_PROPERTY(QVariantList appearances READ appearances CONSTANT)
    Q_PROPERTY(QString appearance READ appearance WRITE setAppearance NOTIFY appearanceChanged)
    Q_PROPERTY(QVariantList appLanguages READ appLanguages CONSTANT)
    Q_PROPERTY(QString appLanguage READ appLanguage WRITE setAppLanguage NOTIFY appLanguageChanged)
    /// Whether there is a clipboard to be restored after an insertion.
    Q_PROPERTY(bool pastes READ pastes NOTIFY insertionMethodChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    /// Why the last change of it failed; empty otherwise
    Q_PROPERTY(QString launchAtLoginFailure READ launchAtLoginFailure NOTIFY launchAtLoginChanged)
    /// Whether the program has an icon that the user can see while no window is open
    Q_PROPERTY(bool hasStatusIcon READ hasStatusIcon NOTIFY hasStatusIconChanged)
    /// Why a setting could not be stored, or what became of a damaged settings file; empty while all is well.
    /// It holds until the program ends.
    Q_PROPERTY(QString storageFailure READ storageFailure NOTIFY storageFailureChanged)

public:
    /// `relaunch` ends this program and starts it anew, `quit` ends it. All collaborators outlive this
    /// object.
    PreferencesViewModel(AppSettings& settings, LoginItem& loginItem, StatusItem& statusItem,
                         Windows& windows, std::function<void()> relaunch, std::function<void()> quit,
                         QObject* parent);
    ~PreferencesViewModel() override;

    [[nodiscard]] QObject* settings() const;
    [[nodiscard]] QVariantMap rows() const;
    [[nodiscard]] QVariantList languages() const;
    [[nodiscard]] QString language() const;
    void setLanguage(const QString& value);
    [[nodiscard]] QVariantList insertionMethods() const;
    [[nodiscard]] QString insertionMethod() const;
    void setInsertionMethod(const QString& value);
    [[nodiscard]] QVariantList appearances() const;
    [[nodiscard]] QString appearance() const;
    void setAppearance(const QString& value);
    [[nodiscard]] static QVariantList appLanguages();
    [[nodiscard]] QString appLanguage() const;
    /// Another language takes effect by starting the program anew, which this does.
    void setAppLanguage(const QString& value);
    [[nodiscard]] bool pastes() const;
    [[nodiscard]] bool launchAtLogin() const;
    void setLaunchAtLogin(bool launch);
    [[nodiscard]] const QString& launchAtLoginFailure() const { return m_launchAtLoginFailure; }
    [[nodiscard]] const QString& storageFailure() const { return m_storageFailure; }

    [[nodiscard]] bool hasStatusIcon() const;

    Q_INVOKABLE void showSetupGuide() const;
    Q_INVOKABLE void quit() const { m_quit(); }

Q_SIGNALS:
    void languageChanged();
    void insertionMethodChanged();
    void appearanceChanged();
    void appLanguageChanged();
    void launchAtLoginChanged();
    void hasStatusIconChanged();
    void storageFailureChanged();

private:
    AppSettings& m_stored;
    QQmlPropertyMap* m_settings;
    LoginItem& m_loginItem;
    StatusItem& m_statusItem;
    Windows& m_windows;
    std::function<void()> m_relaunch;
    std::function<void()> m_quit;
    QString m_launchAtLoginFailure;
    QString m_storageFailure;
};

} // namespace tulvane
