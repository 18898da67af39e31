#pragma once

#include <QString>

namespace tulvane {

/// Why a recording could not start. The description is the text that the user reads.
class RecorderError final {
public:
    enum class Kind {
        engineStartFailed, ///< the microphone is there, but gave no stream; carries the underlying
                           ///< description
        noInputDevice,     ///< no sound server, or no microphone on it
        unsupportedFormat, ///< the microphone's rate or channel count cannot be converted
    };

    /// `underlying` is the description that the system gave, in the user's language.
    [[nodiscard]] static RecorderError engineStartFailed(const QString& underlying);
    [[nodiscard]] static RecorderError noInputDevice();
    [[nodiscard]] static RecorderError unsupportedFormat();

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] QString description() const;

    bool operator==(const RecorderError&) const = default;

private:
    explicit RecorderError(Kind kind, QString underlying = {});

    Kind m_kind;
    QString m_underlying;
};

} // namespace tulvane
