#pragma once

#include <QMetaType>
#include <QString>

#include <utility>

namespace tulvane {

/// What is known of one model's file.
class ModelState final {
public:
    enum class Kind {
        downloading,   ///< a transfer is running; see `fraction`
        failed,        ///< the last download or check failed; see `message`
        notDownloaded, ///< no file on disk
        verifying,     ///< the file has arrived and is being checked
        ready,         ///< a checked file is on disk
    };

    ModelState() = default;
    [[nodiscard]] static ModelState downloading(double fraction) { return {Kind::downloading, fraction, {}}; }
    [[nodiscard]] static ModelState failed(const QString& message) { return {Kind::failed, 0, message}; }
    [[nodiscard]] static ModelState notDownloaded() { return {Kind::notDownloaded, 0, {}}; }
    [[nodiscard]] static ModelState verifying() { return {Kind::verifying, 0, {}}; }
    [[nodiscard]] static ModelState ready() { return {Kind::ready, 0, {}}; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// 0 to 1 while downloading.
    [[nodiscard]] double fraction() const { return m_fraction; }
    /// Why it failed, in the user's language.
    [[nodiscard]] const QString& message() const { return m_message; }
    /// The case's name: "downloading", "notDownloaded", ...
    [[nodiscard]] QString name() const
    {
        switch (m_kind) {
        case Kind::downloading:
            return QStringLiteral("downloading");
        case Kind::failed:
            return QStringLiteral("failed");
        case Kind::notDownloaded:
            return QStringLiteral("notDownloaded");
        case Kind::verifying:
            return QStringLiteral("verifying");
        case Kind::ready:
            return QStringLiteral("ready");
        }
        Q_UNREACHABLE();
    }

    [[nodiscard]] friend bool operator==(const ModelState&, const ModelState&) = default;

private:
    ModelState(Kind kind, double fraction, QString message)
        : m_kind(kind),
          m_fraction(fraction),
          m_message(std::move(message))
    {
    }

    Kind m_kind = Kind::notDownloaded;
    double m_fraction = 0;
    QString m_message;
};

} // namespace tulvane

Q_DECLARE_METATYPE(tulvane::ModelState)
