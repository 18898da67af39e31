#pragma once

#include <ui/viewmodels/ChoiceViewModel.h>

#include <QObject>
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
    Q_PROPERTY(tulvane::ChoiceViewModel* language READ language CONSTANT)
    Q_PROPERTY(tulvane::ChoiceViewModel* insertionMethod READ insertionMethod CONSTANT)
    Q_PROPERTY(tulvane::ChoiceViewModel* appearance READ appearance CONSTANT)
    /// Another one takes effect by starting the program anew, which the assignment does.
    Q_PROPERTY(tulvane::ChoiceViewModel* appLanguage READ appLanguage CONSTANT)
    /// Whether there is a clipboard to be restored after an insertion.
    Q_PROPERTY(bool pastes READ pastes NOTIFY pastesChanged)
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
    [[nodiscard]] ChoiceViewModel* language() const { return m_language; }
    [[nodiscard]] ChoiceViewModel* insertionMethod() const { return m_insertionMethod; }
    [[nodiscard]] ChoiceViewModel* appearance() const { return m_appearance; }
    [[nodiscard]] ChoiceViewModel* appLanguage() const { return m_appLanguage; }
    [[nodiscard]] bool pastes() const;
    [[nodiscard]] bool launchAtLogin() const;
    void setLaunchAtLogin(bool launch);
    [[nodiscard]] const QString& launchAtLoginFailure() const { return m_launchAtLoginFailure; }
    [[nodiscard]] const QString& storageFailure() const { return m_storageFailure; }

    [[nodiscard]] bool hasStatusIcon() const;

    /// A number of seconds in minutes, where it has any: "5 min", "1 min 30 s"; else empty.
    Q_INVOKABLE [[nodiscard]] QString inMinutes(int seconds) const;
    /// Reads again what other programs can change, too.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void showSetupGuide() const;
    Q_INVOKABLE void quit() const { m_quit(); }

Q_SIGNALS:
    void pastesChanged();
    void launchAtLoginChanged();
    void hasStatusIconChanged();
    void storageFailureChanged();

private:
    AppSettings& m_stored;
    QQmlPropertyMap* m_settings;
    LoginItem& m_loginItem;
    StatusItem& m_statusItem;
    Windows& m_windows;
    ChoiceViewModel* m_language;
    ChoiceViewModel* m_insertionMethod;
    ChoiceViewModel* m_appearance;
    ChoiceViewModel* m_appLanguage;
    std::function<void()> m_quit;
    bool m_shownLaunchAtLogin = false;
    QString m_launchAtLoginFailure;
    QString m_storageFailure;
};

} // namespace tulvane
