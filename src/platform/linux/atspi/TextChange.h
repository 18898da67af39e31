#pragma once

#include <QString>

#include <optional>

namespace tulvane {

/// How a program counts the characters of its texts: some by code points, some by UTF-16 units.
enum class TextUnit { codePoint, utf16 };

/// The unit by which this text has so many characters; none where it fits neither.
[[nodiscard]] std::optional<TextUnit> unitOf(const QString& text, int characters);
/// A text's length in that unit.
[[nodiscard]] int lengthIn(TextUnit unit, const QString& text);
/// The index into the string of a program's offset; none where the text is shorter, or the offset negative.
[[nodiscard]] std::optional<qsizetype> indexOf(TextUnit unit, const QString& text, int offset);

/// What a program made of a request to insert a text after its selection, told from its text before and
/// after.
struct TextChange {
    enum class Kind {
        nothing,  ///< the text is as it was
        inserted, ///< it has come in where it belongs, and nothing else is changed there
        replaced, ///< it has come in, and the selection is gone already
        other, ///< it has come in somewhere; something else has changed too, as when the user goes on typing
        altered, ///< something else came in where it belongs, as where only so much may be written
        damaged, ///< something of what was there is lost
    };

    Kind kind = Kind::nothing;
    qsizetype length = 0; ///< of what stands at the place now, in UTF-16 units: for inserted and altered

    /// `start` and `end` are the selection's indices in `before`, and equal where nothing is selected.
    [[nodiscard]] static TextChange between(const QString& before, const QString& after, qsizetype start,
                                            qsizetype end, const QString& inserted);

    [[nodiscard]] friend bool operator==(const TextChange&, const TextChange&) = default;
};

} // namespace tulvane
