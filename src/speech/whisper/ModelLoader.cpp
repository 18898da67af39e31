#include <base/Log.h>
#include <speech/whisper/BlockReader.h>
#include <speech/whisper/ModelLoader.h>

#include <whisper.h>

#include <cstring>
#include <exception>

namespace tulvane {

namespace {

/// What the library's callbacks read from.
struct Source {
    BlockReader reader;
    const std::atomic<bool>& closing;
    const std::function<void()>& progress;
    /// A read went beyond the end, which is how the library learns that the model is whole.
    bool ended = false;
};

/// Ends a load that nothing waits for any more: the library frees what it has and gives no context. Zeros in
/// place of the file's numbers would not do, since it divides by some of them.
class LoadAbandoned final : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "the program is ending"; }
};

/// The library takes no notice of a short read; what could not be read is zero rather than left-over memory,
/// and zero makes it stop.
std::size_t readFrom(void* context, void* output, std::size_t size)
{
    auto* const source = static_cast<Source*>(context);
    if (source->closing)
        throw LoadAbandoned();
    if (source->progress)
        source->progress();
    auto* const bytes = static_cast<char*>(output);
    const auto done = static_cast<std::size_t>(source->reader.read(bytes, static_cast<qint64>(size)));
    if (done < size) {
        std::memset(bytes + done, 0, size - done);
        source->ended = true;
    }
    return done;
}

bool hasEnded(void* context)
{
    return static_cast<Source*>(context)->ended;
}

} // namespace

whisper_context* loadModel(QFile& file, const std::atomic<bool>& closing,
                           const std::function<void()>& progress)
{
    whisper_context_params params = whisper_context_default_params();
    params.use_gpu = true;
    params.flash_attn = true;

    Source source{.reader = BlockReader(file), .closing = closing, .progress = progress};
    whisper_model_loader loader{};
    loader.context = &source;
    loader.read = readFrom;
    loader.eof = hasEnded;
    loader.close = [](void* /*context*/) {};
    try {
        return whisper_init_with_params(&loader, params);
    } catch (const std::exception& exception) {
        qCCritical(lcWhisper) << "The library failed to load a model:" << exception.what();
    } catch (...) {
        qCCritical(lcWhisper) << "The library failed to load a model";
    }
    return nullptr;
}

} // namespace tulvane
