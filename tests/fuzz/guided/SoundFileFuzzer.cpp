#include "Fuzzer.h"

#include <audio/files/PlainWave.h>
#include <audio/files/SoundFile.h>

#include <sys/mman.h>
#include <unistd.h>

// Our own reader, and the way to the library that reads all other formats.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    const int file = memfd_create("sound", MFD_CLOEXEC);
    test::promise(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size), "the input is a file");
    const QString path = QStringLiteral("/proc/self/fd/%1").arg(file);
    const auto plain = readPlainWave(path);
    test::promise(isPlainWave(path) == plain.has_value(), "a plain file can be read");
    const auto sound = readSoundFile(path);
    if (plain) {
        test::promise(sound.has_value(), "the library reads what we read");
        test::promise(sound->samples.size() == plain->samples.size(), "both give the same samples");
    }
    close(file);
    return 0;
}
