#pragma once

#include <QString>
#include <QtGlobal>

namespace tulvane {

/// What stood in the engine's way, where that is known beyond the error itself.
struct EngineObstacle {
    enum class Kind {
        unknown,
        unreadable,      ///< the model file cannot be opened: `detail` is the system's reason
        damaged,         ///< the file is no sound speech model: `detail` says where it fails
        noBackend,       ///< the speech library has nothing to compute with
        memory,          ///< less memory is left than this takes
        unknownLanguage, ///< the model does not know the language: `detail` is its code
        library,         ///< the speech library refused: `detail` is its own last line
    };

    Kind kind = Kind::unknown;
    QString detail;
    qint64 neededBytes = 0;    ///< of memory
    qint64 availableBytes = 0; ///< of memory

    /// One sentence for the user; empty for `unknown`. Main thread.
    [[nodiscard]] QString description() const;
};

/// Why the recogniser could not do what it was asked.
class EngineError final {
public:
    enum class Kind { modelLoadFailed, transcriptionFailed, noModelLoaded };

    // Codes of `transcriptionFailed` that are the program's own; the library's are -2 to -9.
    static constexpr qint32 textNotCopied = -1;     ///< the language could not be made a C string
    static constexpr qint32 unknownLanguage = -100; ///< the model has no such language
    static constexpr qint32 libraryThrew = -101;    ///< an exception came out of the library
    static constexpr qint32 notEnoughMemory = -102; ///< the take is too long for the memory that is left
    static constexpr qint32 deviceFailed = -103;    ///< what it was computed on crashed, hung or went away

    [[nodiscard]] static EngineError modelLoadFailed(const QString& modelFile,
                                                     const EngineObstacle& obstacle = {});
    [[nodiscard]] static EngineError transcriptionFailed(qint32 code, const EngineObstacle& obstacle = {});
    [[nodiscard]] static EngineError noModelLoaded();

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The file that could not be loaded; empty for the other kinds.
    [[nodiscard]] QString modelFile() const { return m_modelFile; }
    /// The code of a failed transcription; 0 for the other kinds.
    [[nodiscard]] qint32 code() const { return m_code; }
    [[nodiscard]] const EngineObstacle& obstacle() const { return m_obstacle; }
    /// What the user reads: what failed, and in a second line why, where that is known. Main thread.
    [[nodiscard]] QString description() const;

    /// By kind, file and code: the obstacle only explains.
    friend bool operator==(const EngineError& one, const EngineError& other)
    {
        return one.m_kind == other.m_kind && one.m_modelFile == other.m_modelFile &&
               one.m_code == other.m_code;
    }

private:
    explicit EngineError(Kind kind) : m_kind(kind) {}
    [[nodiscard]] QString whatFailed() const;

    Kind m_kind;
    QString m_modelFile;
    qint32 m_code = 0;
    EngineObstacle m_obstacle;
};

} // namespace tulvane
