#include "Fuzzer.h"

#include <speech/whisper/ModelFileCheck.h>
#include <support/TinyModel.h>

#include <QBuffer>

#include <span>

namespace {

using namespace tulvane;

// Before them lies the header, behind them lie the tensors; the words themselves are of no interest.
constexpr qsizetype beforeTheWords = 33'000;
constexpr qsizetype fromTheEnd = 60'000;
constexpr std::size_t editSize = 4;

/// A sound model with changes: each four bytes of the input say where (from the beginning or the end) and
/// what.
QByteArray edited(std::span<const std::uint8_t> edits)
{
    static const QByteArray sound = test::TinyModel{}.bytes();
    QByteArray bytes = sound;
    for (; edits.size() >= editSize; edits = edits.subspan(editSize)) {
        const qsizetype offset = edits[1] * 256 + edits[2];
        const qsizetype at =
            (edits[0] & 1) != 0 ? bytes.size() - 1 - offset % fromTheEnd : offset % beforeTheWords;
        if (at < 0 || at >= bytes.size())
            continue;
        if ((edits[0] & 6) == 6)
            bytes.truncate(at);
        else
            bytes[at] = static_cast<char>(edits[3]);
    }
    return bytes;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes = test::bytesOf(data, size);
    if (size > 0 && data[0] != 'l')
        bytes = edited({data, size});
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const auto facts = checkModelFile(file);
    if (facts) {
        test::promise(facts->weightBytes <= bytes.size(), "weights lie within the file");
        test::promise(facts->neededMemory() > 0, "a model takes memory");
    } else {
        test::promise(!facts.error().isEmpty(), "a refusal has a reason");
    }
    return 0;
}
