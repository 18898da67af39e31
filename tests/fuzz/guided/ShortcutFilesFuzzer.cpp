#include "Fuzzer.h"

#include <platform/linux/keys/ShortcutFiles.h>

// The files in which desktops keep their key combinations.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    const KeyLookup keyOf = [](const QString& keysym) {
        return keysym.isEmpty() ? std::nullopt : std::optional<quint32>(keysym.front().unicode() % 128);
    };
    const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    static_cast<void>(readKdeShortcuts(file, keyOf));
    static_cast<void>(readXfceShortcuts(file, keyOf));
    static_cast<void>(readOpenboxShortcuts(file, keyOf));
    return 0;
}
