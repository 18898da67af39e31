#include <speech/whisper/ModelHeader.h>

#include <QtEndian>

#include <algorithm>

namespace tulvane {

namespace {

// Every Whisper model has these: English alone, 99 languages, 100 languages.
constexpr std::array<qint32, 3> vocabularies = {51864, 51865, 51866};
constexpr std::array<qint32, 2> melBands = {80, 128};
// 30 s of audio at 20 ms a position, and the longest text; the library's arithmetic stands on both.
constexpr qint32 audioPositions = 1500;
constexpr qint32 textPositions = 448;
// The largest model has 32 layers of 1280. Beyond 32 the library's fixed graph size may not suffice, and
// beyond 4096 its 32-bit element counts would overflow.
constexpr qint32 mostLayers = 32;
constexpr qint32 widest = 4096;
// The attention of every backend handles heads in steps of eight values.
constexpr qint32 headStep = 8;

bool isShape(qint32 width, qint32 heads)
{
    return width > 0 && width <= widest && heads > 0 && heads <= width && width % heads == 0 &&
           (width / heads) % headStep == 0;
}

bool isLayerCount(qint32 layers)
{
    return layers > 0 && layers <= mostLayers;
}

std::optional<ggml_type> typeOf(qint32 kind)
{
    // Not GGML_FTYPE_ALL_F32: the library's convolution ends the process unless its weights are F16.
    switch (kind) {
    case GGML_FTYPE_MOSTLY_F16:
        return GGML_TYPE_F16;
    case GGML_FTYPE_MOSTLY_Q4_0:
        return GGML_TYPE_Q4_0;
    case GGML_FTYPE_MOSTLY_Q4_1:
        return GGML_TYPE_Q4_1;
    case GGML_FTYPE_MOSTLY_Q5_0:
        return GGML_TYPE_Q5_0;
    case GGML_FTYPE_MOSTLY_Q5_1:
        return GGML_TYPE_Q5_1;
    case GGML_FTYPE_MOSTLY_Q8_0:
        return GGML_TYPE_Q8_0;
    case GGML_FTYPE_MOSTLY_Q2_K:
        return GGML_TYPE_Q2_K;
    case GGML_FTYPE_MOSTLY_Q3_K:
        return GGML_TYPE_Q3_K;
    case GGML_FTYPE_MOSTLY_Q4_K:
        return GGML_TYPE_Q4_K;
    case GGML_FTYPE_MOSTLY_Q5_K:
        return GGML_TYPE_Q5_K;
    case GGML_FTYPE_MOSTLY_Q6_K:
        return GGML_TYPE_Q6_K;
    default:
        return std::nullopt;
    }
}

} // namespace

ModelHeader ModelHeader::fromBytes(const std::array<char, byteCount>& bytes)
{
    std::array<qint32, 11> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = qFromLittleEndian<qint32>(bytes.data() + i * sizeof(qint32));
    return {.vocabulary = numbers[0],
            .audioContext = numbers[1],
            .audioState = numbers[2],
            .audioHeads = numbers[3],
            .audioLayers = numbers[4],
            .textContext = numbers[5],
            .textState = numbers[6],
            .textHeads = numbers[7],
            .textLayers = numbers[8],
            .mels = numbers[9],
            .fileType = numbers[10]};
}

QString ModelHeader::problem() const
{
    if (std::ranges::find(vocabularies, vocabulary) == vocabularies.end())
        return QStringLiteral("a vocabulary of %1").arg(vocabulary);
    if (audioContext != audioPositions || textContext != textPositions)
        return QStringLiteral("contexts of %1 and %2").arg(audioContext).arg(textContext);
    if (!isShape(audioState, audioHeads) || !isShape(textState, textHeads) || audioState != textState)
        return QStringLiteral("widths of %1 and %2 with %3 and %4 heads")
            .arg(audioState)
            .arg(textState)
            .arg(audioHeads)
            .arg(textHeads);
    if (!isLayerCount(audioLayers) || !isLayerCount(textLayers))
        return QStringLiteral("%1 and %2 layers").arg(audioLayers).arg(textLayers);
    if (std::ranges::find(melBands, mels) == melBands.end())
        return QStringLiteral("%1 mel bands").arg(mels);
    const std::optional<ggml_type> type = weightType();
    if (!type)
        return QStringLiteral("weights of the unknown kind %1").arg(fileType);
    if (audioState % ggml_blck_size(*type) != 0)
        return QStringLiteral("a width of %1, which weights of kind %2 cannot fill")
            .arg(audioState)
            .arg(fileType);
    return {};
}

std::optional<ggml_type> ModelHeader::weightType() const
{
    const std::optional<ggml_type> type = typeOf(fileType % GGML_QNT_VERSION_FACTOR);
    if (fileType < 0 || !type)
        return std::nullopt;
    // Blocks of an older layout have the same sizes and other contents.
    const int version = ggml_is_quantized(*type) ? GGML_QNT_VERSION : 0;
    return fileType / GGML_QNT_VERSION_FACTOR == version ? type : std::nullopt;
}

bool ModelHeader::isMultilingual() const
{
    return vocabulary > vocabularies.front();
}

} // namespace tulvane
