#pragma once

#include <QByteArray>

#include <cstdint>

namespace tulvane {

/// The text around the caret, in UTF-8, as far as the field tells; both places are offsets in bytes.
struct TextAround {
    QByteArray text;
    std::uint32_t cursor = 0;
    std::uint32_t anchor = 0; ///< the other end of the selection; the cursor's where nothing is selected

    [[nodiscard]] QByteArray beforeCursor() const { return text.left(static_cast<qsizetype>(cursor)); }
    /// Whether a field that showed `before` has taken this text, told from what it shows now. A field may
    /// show no more than the caret's line, the last few words, or the last kilobytes.
    [[nodiscard]] bool hasTaken(const QByteArray& taken, const TextAround& before) const;

    /// Whether such fields show of this text that it has come: not where its last line is blank.
    [[nodiscard]] static bool canTell(const QByteArray& text);

    [[nodiscard]] friend bool operator==(const TextAround&, const TextAround&) = default;
};

/// What a field that has the focus tells its input method.
struct FieldState {
    enum class Hint : std::uint32_t { hidden = 0x40, sensitive = 0x80, multiLine = 0x200 };
    enum class Purpose : std::uint32_t { password = 8, pin = 9 };

    bool tellsText = false; ///< whether it shows the text around the caret at all
    TextAround around;
    std::uint32_t hints = 0;
    std::uint32_t purpose = 0;

    [[nodiscard]] bool has(Hint hint) const { return (hints & static_cast<std::uint32_t>(hint)) != 0; }
    [[nodiscard]] bool isForPasswords() const;
};

} // namespace tulvane
