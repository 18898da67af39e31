#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <array>
#include <optional>

namespace tulvane {

/// One thing on a pasteboard, in each of the forms that its owner offers.
struct PasteboardItem {
    /// The type under which every backend takes plain text, as UTF-8.
    static inline const QString plainTextType = QStringLiteral("public.utf8-plain-text");

    /// Raw bytes by type: a uniform type identifier, or the name of a selection target.
    QMap<QString, QByteArray> dataByType;

    [[nodiscard]] static PasteboardItem text(const QString& text)
    {
        return {{{plainTextType, text.toUtf8()}}};
    }

    /// The item as text, whichever program made it; none where it has no text in UTF-8.
    [[nodiscard]] std::optional<QString> plainText() const
    {
        const std::array types{plainTextType, QStringLiteral("UTF8_STRING"),
                               QStringLiteral("text/plain;charset=utf-8")};
        for (const QString& type : types) {
            const auto data = dataByType.constFind(type);
            if (data != dataByType.cend())
                return QString::fromUtf8(*data);
        }
        return std::nullopt;
    }

    [[nodiscard]] friend bool operator==(const PasteboardItem&, const PasteboardItem&) = default;
};

/// What a pasteboard held when it was read.
struct PasteboardContents {
    QList<PasteboardItem> items;
    /// False when something of it did not come in time: then `items` is a part of the whole, and may be
    /// empty.
    bool complete = true;
};

} // namespace tulvane
