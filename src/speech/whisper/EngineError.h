#pragma once

#include <QString>
#include <QtGlobal>

namespace tulvane {

/// Why the engine could not do what it was asked.
class EngineError final {
public:
    enum class Kind { modelLoadFailed, transcriptionFailed, noModelLoaded };

    // Codes of `transcriptionFailed` that are the program's own; the library's are -2 to -9.
    static constexpr qint32 textNotCopied = -1;     ///< the language could not be made a C string
    static constexpr qint32 unknownLanguage = -100; ///< the model has no such language
    static constexpr qint32 libraryThrew = -101;    ///< an exception came out of the library
    static constexpr qint32 notEnoughMemory = -102; ///< the take is too long for the memory that is left

    [[nodiscard]] static EngineError modelLoadFailed(const QString& modelFile);
    [[nodiscard]] static EngineError transcriptionFailed(qint32 code);
    [[nodiscard]] static EngineError noModelLoaded();

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The file that could not be loaded; empty for the other kinds.
    [[nodiscard]] QString modelFile() const { return m_modelFile; }
    /// The code of a failed transcription; 0 for the other kinds.
    [[nodiscard]] qint32 code() const { return m_code; }
    /// What the user reads. Main thread.
    [[nodiscard]] QString description() const;

    friend bool operator==(const EngineError&, const EngineError&) = default;

private:
    explicit EngineError(Kind kind) : m_kind(kind) {}

    Kind m_kind;
    QString m_modelFile;
    qint32 m_code = 0;
};

} // namespace tulvane
