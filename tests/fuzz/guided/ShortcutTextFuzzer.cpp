#include "Fuzzer.h"

#include <hotkeys/Shortcut.h>
#include <insertion/PasteTable.h>
#include <platform/linux/keys/Accelerator.h>

#include <QJsonDocument>
#include <QVariant>

// Key combinations as they are stored and as desktops write them, and the user's table of terminals.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    const QByteArray bytes = test::bytesOf(data, size);
    const QString text = QString::fromUtf8(bytes);
    if (const auto shortcut = Shortcut::fromJson(text)) {
        test::promise(Shortcut::fromJson(shortcut->toJson()) == shortcut, "a stored shortcut comes back");
        static_cast<void>(shortcut->combination());
    }
    const KeyLookup keyOf = [](const QString& keysym) {
        return keysym.isEmpty() ? std::nullopt : std::optional<quint32>(keysym.front().unicode() % 128);
    };
    static_cast<void>(fromQtAccelerator(text, keyOf));
    static_cast<void>(fromGtkAccelerator(text, keyOf));
    static_cast<void>(fromOpenboxAccelerator(text, keyOf));

    const QVariant table = QJsonDocument::fromJson(bytes).toVariant();
    static_cast<void>(pasteTable(table));
    static_cast<void>(pasteTableProblems(table));
    return 0;
}
