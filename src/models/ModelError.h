#pragma once

#include <QString>

namespace tulvane {

/// Why a model file was not accepted, or could not be put in place or removed. A plain value; any thread.
class ModelError final {
public:
    enum class Kind { unexpectedSize, httpStatus, notAGGMLFile, checksumMismatch, fileSystem };

    [[nodiscard]] static ModelError unexpectedSize(qint64 actual, qint64 expected)
    {
        return {Kind::unexpectedSize, actual, expected, {}};
    }
    [[nodiscard]] static ModelError httpStatus(int code) { return {Kind::httpStatus, code, 0, {}}; }
    [[nodiscard]] static ModelError notAGGMLFile() { return {Kind::notAGGMLFile, 0, 0, {}}; }
    [[nodiscard]] static ModelError checksumMismatch() { return {Kind::checksumMismatch, 0, 0, {}}; }
    /// The file system's own reason, in its own words.
    [[nodiscard]] static ModelError fileSystem(const QString& reason)
    {
        return {Kind::fileSystem, 0, 0, reason};
    }

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The text that the user reads.
    [[nodiscard]] QString description() const;

    [[nodiscard]] friend bool operator==(const ModelError&, const ModelError&) = default;

private:
    ModelError(Kind kind, qint64 actual, qint64 expected, const QString& reason)
        : m_kind(kind),
          m_actual(actual),
          m_expected(expected),
          m_reason(reason)
    {
    }

    Kind m_kind;
    qint64 m_actual; ///< bytes, or the status code
    qint64 m_expected;
    QString m_reason;
};

} // namespace tulvane
