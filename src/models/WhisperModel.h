#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace tulvane {

/// One speech model of the built-in list: where its file comes from, how large it is, how it is presented. A
/// plain value; any thread.
struct WhisperModel {
    /// Which fine-tune of the model.
    enum class Variant { standard, verbatim, semantic };
    /// The weight format of the file.
    enum class Precision { q5_0, f16 };
    enum class Size { small, medium };

    QString id;          ///< stable; stored as the selected model
    QString displayName; ///< full name shown in lists
    Variant variant = Variant::standard;
    Precision precision = Precision::q5_0;
    Size size = Size::medium;
    QString repo;                    ///< on the model hub, owner/name
    QString fileName;                ///< inside the repository
    qint64 approximateSizeBytes = 0; ///< a whole number of megabytes
    std::optional<QString> sha256;   ///< of the file, 64 hexadecimal digits; absent: not checked

    /// Every entry, the small one included.
    [[nodiscard]] static const QList<WhisperModel>& all();
    /// The entries that are offered for choosing.
    [[nodiscard]] static const QList<WhisperModel>& gallery();
    /// The entry with exactly this identifier.
    [[nodiscard]] static std::optional<WhisperModel> find(const QString& id);
    /// The entry that a new user starts with, and that stands in for an unknown identifier.
    [[nodiscard]] static const WhisperModel& fallback();
    /// The entry with exactly this identifier, or else the fallback.
    [[nodiscard]] static WhisperModel findOrFallback(const QString& id);

    /// The address of the file on the hub, whose base address ends in a slash. A result that is no valid
    /// address is a programming error and ends the process.
    [[nodiscard]] QUrl downloadURL(const QUrl& hub) const;

    /// "NB-Whisper Verbatim", translated.
    [[nodiscard]] QString shortFamilyName() const;
    /// "Quantised (q5_0)", translated.
    [[nodiscard]] QString precisionLabel() const;
    /// What the model is good for, in one or two translated sentences.
    [[nodiscard]] QString description() const;

    /// An object with the fields' own names as keys; `sha256` only when there is one.
    [[nodiscard]] QJsonObject toJson() const;
    /// None when a field is missing or of the wrong type, or an enumeration's text is unknown.
    [[nodiscard]] static std::optional<WhisperModel> fromJson(const QJsonObject& object);

    [[nodiscard]] friend bool operator==(const WhisperModel&, const WhisperModel&) = default;
};

[[nodiscard]] std::size_t qHash(const WhisperModel& model, std::size_t seed = 0);

} // namespace tulvane
