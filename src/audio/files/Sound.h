#pragma once

#include <QString>

#include <vector>

namespace tulvane {

/// Why a sound file gave no samples. The description is one line for the person who named the file.
struct SoundFileError {
    enum class Kind {
        missing,    ///< there is no such file
        folder,     ///< the path names a folder
        unreadable, ///< the system refused to open or read it
        empty,      ///< zero bytes
        foreign,    ///< not a sound format that can be read
        silent,     ///< a sound file that holds not one frame
        tooLarge,   ///< the samples would not fit into memory
    };
    Kind kind;
    QString path;
    QString detail; ///< the system's or the library's own words, where they help

    [[nodiscard]] QString description() const;
};

/// A sound file's samples as the recogniser takes them.
struct Sound {
    std::vector<float> samples; ///< mono, 16,000 a second, -1 to 1
    double seconds = 0;         ///< length of the file itself, before conversion
};

} // namespace tulvane
