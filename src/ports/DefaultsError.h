#pragma once

#include <base/Translate.h>

#include <QMetaType>
#include <QString>

#include <utility>

namespace tulvane {

/// What can go wrong with the stored preferences.
class DefaultsError final {
public:
    enum class Kind {
        damaged,             ///< the file made no sense; it was set aside, nothing of it is lost
        damagedWhileRunning, ///< as `damaged`, but what had been read of it before holds and was stored again
        damagedInPlace,      ///< the file makes no sense and could not be moved; it is not written any more
        unreadable,          ///< the file may not or cannot be read; it is not written either
        notWritten,          ///< a value could not be stored; it holds until the program ends
        notStorable,         ///< a value of a type that no preference has
    };

    [[nodiscard]] static DefaultsError damaged(const QString& file, const QString& setAsideAs)
    {
        return {Kind::damaged, file, setAsideAs};
    }
    [[nodiscard]] static DefaultsError damagedWhileRunning(const QString& file, const QString& setAsideAs)
    {
        return {Kind::damagedWhileRunning, file, setAsideAs};
    }
    [[nodiscard]] static DefaultsError damagedInPlace(const QString& file, const QString& reason)
    {
        return {Kind::damagedInPlace, file, reason};
    }
    [[nodiscard]] static DefaultsError unreadable(const QString& file, const QString& reason)
    {
        return {Kind::unreadable, file, reason};
    }
    [[nodiscard]] static DefaultsError notWritten(const QString& file, const QString& reason)
    {
        return {Kind::notWritten, file, reason};
    }
    [[nodiscard]] static DefaultsError notStorable(const QString& key)
    {
        return {Kind::notStorable, key, QString()};
    }

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The file, or for `notStorable` the key.
    [[nodiscard]] QString subject() const { return m_subject; }
    /// Where a damaged file lies now, or why the operation failed.
    [[nodiscard]] QString detail() const { return m_detail; }

    /// The text that the user reads.
    [[nodiscard]] QString description() const
    {
        switch (m_kind) {
        case Kind::damaged:
            return translate(
                       "The settings file was damaged. It was set aside as %1, and settings start afresh.")
                .arg(m_detail);
        case Kind::damagedWhileRunning:
            return translate("The settings file was damaged while Tulvane was running. It was set aside as "
                             "%1, and the "
                             "settings in use were stored again.")
                .arg(m_detail);
        case Kind::damagedInPlace:
            return translate("The settings file %1 is damaged and could not be set aside: %2")
                .arg(m_subject, m_detail);
        case Kind::unreadable:
            return translate("The settings file %1 cannot be read: %2").arg(m_subject, m_detail);
        case Kind::notWritten:
            return translate("The setting could not be saved to %1: %2").arg(m_subject, m_detail);
        case Kind::notStorable:
            return translate("The value for %1 cannot be stored.").arg(m_subject);
        }
        Q_UNREACHABLE();
    }

    [[nodiscard]] friend bool operator==(const DefaultsError&, const DefaultsError&) = default;

private:
    DefaultsError(Kind kind, QString subject, QString detail)
        : m_kind(kind),
          m_subject(std::move(subject)),
          m_detail(std::move(detail))
    {
    }

    Kind m_kind;
    QString m_subject;
    QString m_detail;
};

} // namespace tulvane
