#include "Fuzzer.h"

#include <speech/CleanTranscript.h>

// Whatever the recogniser may say.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    const QString raw = QString::fromUtf8(test::bytesOf(data, size));
    for (const bool capital : {false, true}) {
        for (const bool space : {false, true}) {
            const QString text =
                cleanTranscript(raw, {.autoCapitalize = capital, .appendTrailingSpace = space});
            test::promise(text.trimmed().isEmpty() == text.isEmpty(), "a text is more than spaces");
            test::promise(text.isEmpty() || text.endsWith(u' ') == space, "the space at the end is as asked");
            test::promise(text.isEmpty() || !text.front().isSpace(), "a text does not begin with a space");
            test::promise(text.isValidUtf16(), "a text is whole");
        }
    }
    return 0;
}
