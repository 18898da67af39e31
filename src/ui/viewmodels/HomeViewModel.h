#pragma once

#include <ui/viewmodels/DictationStatus.h>
#include <ui/viewmodels/HistoryViewModel.h>

#include <QDate>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AppSettings;
class Clock;
class DictationStatus;
class HotkeyStatus;
class StatsStore;

/// The home page: how things stand, how to start, what has come of it so far. Main thread.
class HomeViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QString greeting READ greeting NOTIFY refreshed)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(tulvane::DictationStatus::Kind tone READ tone NOTIFY statusChanged)
    Q_PROPERTY(bool hasHotkey READ hasHotkey NOTIFY hotkeyChanged)
    /// What to do with the hotkey, before its caps.
    Q_PROPERTY(QString hotkeyVerb READ hotkeyVerb NOTIFY hotkeyChanged)
    /// One list of caps for each hotkey: the combination, the single key.
    Q_PROPERTY(QVariantList hotkeys READ hotkeys NOTIFY hotkeyChanged)
    /// Objects with `title`, `value`, `subtitle` and `symbol`.
    Q_PROPERTY(QVariantList cards READ cards NOTIFY cardsChanged)
    Q_PROPERTY(bool showsSetup READ showsSetup NOTIFY setupShownChanged)
    Q_PROPERTY(bool showsPrivacy READ showsPrivacy NOTIFY privacyShownChanged)
    Q_PROPERTY(tulvane::HistoryViewModel* recent READ recent CONSTANT)

public:
    /// How many of the dictations the page lists.
    static constexpr qsizetype mostRecent = 4;

    /// `recent` lists the newest dictations. All collaborators outlive this object.
    HomeViewModel(const DictationStatus& status, const HotkeyStatus& hotkey, AppSettings& settings,
                  const StatsStore& stats, const Clock& clock, HistoryViewModel& recent, QObject* parent);

    [[nodiscard]] static QString greetingAt(int hour);
    [[nodiscard]] QString greeting() const;
    [[nodiscard]] QString status() const;
    /// What the status line's words mean.
    [[nodiscard]] DictationStatus::Kind tone() const;
    [[nodiscard]] bool hasHotkey() const { return !hotkeys().isEmpty(); }
    [[nodiscard]] QString hotkeyVerb() const;
    [[nodiscard]] QVariantList hotkeys() const;
    [[nodiscard]] QVariantList cards() const;
    [[nodiscard]] bool showsSetup() const;
    [[nodiscard]] bool showsPrivacy() const;
    [[nodiscard]] HistoryViewModel* recent() const { return &m_recent; }

    /// Reads the clock again: the greeting, the streak and the times depend on it. For when the page or its
    /// window comes into view.
    Q_INVOKABLE void refresh();
    /// The same, where the greeting or the day has become another one since.
    Q_INVOKABLE void followClock();
    /// The privacy card goes for good.
    Q_INVOKABLE void hidePrivacy();

Q_SIGNALS:
    void refreshed();
    void statusChanged();
    void hotkeyChanged();
    void cardsChanged();
    void setupShownChanged();
    void privacyShownChanged();

private:
    const DictationStatus& m_status;
    const HotkeyStatus& m_hotkey;
    AppSettings& m_settings;
    const StatsStore& m_stats;
    const Clock& m_clock;
    HistoryViewModel& m_recent;
    QString m_shownGreeting;
    QDate m_shownDay;
};

} // namespace tulvane
