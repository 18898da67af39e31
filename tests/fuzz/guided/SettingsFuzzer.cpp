#include "Fuzzer.h"

#include <base/Clock.h>
#include <platform/linux/storage/JsonUserDefaults.h>
#include <ports/DefaultsValue.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace {

const tulvane::SystemClock systemClock;
constexpr qsizetype mostCopies = 3;

} // namespace

// A settings file that holds anything: what it says is read, and one value can be written and read again.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/fuzz-XXXXXX"));
    const QString name = folder.filePath(QStringLiteral("domain.json"));
    for (const QString& left : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
        QFile::remove(folder.filePath(left));
    QFile file(name);
    file.open(QIODevice::WriteOnly);
    file.write(test::bytesOf(data, size));
    file.close();
    const auto defaults =
        std::make_shared<JsonUserDefaults>(folder.path(), QStringLiteral("domain"), systemClock);
    const auto read = defaults->domain(QStringLiteral("domain"));
    if (read) {
        // Each is written to a disk's file; some tell as much as all.
        for (const QString& key : read->keys().first(std::min(read->keys().size(), mostCopies))) {
            const QVariant value = defaults->value(key);
            if (!storableValue(value))
                continue;
            test::promise(defaults->set(QStringLiteral("copy"), value).has_value(),
                          "what was read can be written");
            test::promise(defaults->value(QStringLiteral("copy")) == value, "writing changes no value");
        }
    }
    test::promise(defaults->set(QStringLiteral("fuzzed"), 7).has_value(), "a value can be written");
    test::promise(defaults->value(QStringLiteral("fuzzed")).toInt() == 7, "what was written is read");
    return 0;
}
