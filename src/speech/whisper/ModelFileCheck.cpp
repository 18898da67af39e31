#include <base/ModelSignature.h>
#include <speech/whisper/BlockReader.h>
#include <speech/whisper/ModelFileCheck.h>
#include <speech/whisper/ModelLayout.h>

#include <QtEndian>

#include <array>
#include <vector>

namespace tulvane {

namespace {

// Half of the library's window of 400 samples, and the constant part.
constexpr qint32 melBins = 201;
// Text tokens of every Whisper model; the library makes up the special ones behind them by itself.
constexpr qint32 fewestWords = 50256;
constexpr quint32 longestWord = 512;
constexpr qint32 mostDimensions = 4;

/// Walks through the file once. Each step gives the problem that it met, or an empty text.
class ModelFileWalk final {
public:
    explicit ModelFileWalk(QIODevice& file) : m_file(file) {}

    Result<ModelFacts, QString> walk()
    {
        using Step = QString (ModelFileWalk::*)();
        for (const Step step : {&ModelFileWalk::readHeader, &ModelFileWalk::readFilters,
                                &ModelFileWalk::readVocabulary, &ModelFileWalk::readTensors}) {
            if (const QString problem = (this->*step)(); !problem.isEmpty())
                return failure(problem);
        }
        return m_facts;
    }

private:
    template <class T>
    [[nodiscard]] bool read(T* values, qsizetype count)
    {
        const auto bytes = static_cast<qint64>(sizeof(T)) * count;
        return m_file.read(reinterpret_cast<char*>(values), bytes) == bytes;
    }
    template <class T>
    [[nodiscard]] bool readNumber(T& number)
    {
        if (!read(&number, 1))
            return false;
        number = qFromLittleEndian(number);
        return true;
    }
    [[nodiscard]] static QString ended(const char* where)
    {
        return QStringLiteral("ends within its ") + QString::fromUtf8(where);
    }

    QString readHeader();
    QString readFilters();
    QString readVocabulary();
    QString readTensors();
    QString readTensor();

    BlockReader m_file;
    ModelFacts m_facts;
    QHash<QByteArray, TensorShape> m_missing;
};

QString ModelFileWalk::readHeader()
{
    quint32 signature = 0;
    std::array<char, ModelHeader::byteCount> bytes{};
    if (!m_file.seek(0) || !readNumber(signature))
        return ended("signature");
    if (signature != modelSignature)
        return QStringLiteral("not a ggml model");
    if (!read(bytes.data(), bytes.size()))
        return ended("header");
    m_facts.header = ModelHeader::fromBytes(bytes);
    const QString problem = m_facts.header.problem();
    return problem.isEmpty() ? problem : QStringLiteral("no speech model that can be run: ") + problem;
}

QString ModelFileWalk::readFilters()
{
    qint32 bands = 0;
    qint32 bins = 0;
    if (!readNumber(bands) || !readNumber(bins))
        return ended("mel filters");
    if (bands != m_facts.header.mels || bins != melBins)
        return QStringLiteral("mel filters of %1 by %2").arg(bands).arg(bins);
    std::vector<float> filters(static_cast<std::size_t>(bands) * static_cast<std::size_t>(bins));
    if (!read(filters.data(), static_cast<qsizetype>(filters.size())))
        return ended("mel filters");
    for (const float value : filters) {
        const float weight = qFromLittleEndian(value);
        // Shares of a band's energy. What is no number is in no range, and so is found, too.
        const bool isShare = weight >= 0.0F && weight <= 1.0F;
        if (!isShare)
            return QStringLiteral("a mel filter that is none");
    }
    return {};
}

QString ModelFileWalk::readVocabulary()
{
    qint32 count = 0;
    if (!readNumber(count))
        return ended("vocabulary");
    if (count < fewestWords || count > m_facts.header.vocabulary)
        return QStringLiteral("a vocabulary of %1 words").arg(count);
    std::array<char, longestWord> word{};
    bool hasSpace = false;
    for (qint32 i = 0; i < count; ++i) {
        quint32 length = 0;
        if (!readNumber(length))
            return ended("vocabulary");
        if (length > longestWord)
            return QStringLiteral("a word of %1 bytes").arg(length);
        if (!read(word.data(), length))
            return ended("vocabulary");
        hasSpace = hasSpace || (length == 1 && word[0] == ' ');
    }
    // The library looks this one up without asking whether it is there.
    return hasSpace ? QString() : QStringLiteral("a vocabulary without the space");
}

QString ModelFileWalk::readTensors()
{
    m_missing = expectedTensors(m_facts.header);
    while (m_file.position() < m_file.size()) {
        if (const QString problem = readTensor(); !problem.isEmpty())
            return problem;
    }
    if (!m_missing.isEmpty())
        return QStringLiteral("%1 tensors are missing").arg(m_missing.size());
    return {};
}

QString ModelFileWalk::readTensor()
{
    qint32 dimensions = 0;
    qint32 nameLength = 0;
    qint32 type = 0;
    if (!readNumber(dimensions) || !readNumber(nameLength) || !readNumber(type))
        return ended("tensors");
    if (dimensions < 1 || dimensions > mostDimensions || nameLength < 1 || nameLength >= GGML_MAX_NAME)
        return QStringLiteral("something after its tensors, or a damaged one");
    std::array<qint32, mostDimensions> extent{1, 1, 1, 1};
    for (qint32 i = 0; i < dimensions; ++i) {
        if (!readNumber(extent[static_cast<std::size_t>(i)]))
            return ended("tensors");
    }
    QByteArray name(nameLength, Qt::Uninitialized);
    if (!read(name.data(), nameLength))
        return ended("tensors");

    const auto expected = m_missing.constFind(name);
    if (expected == m_missing.constEnd())
        return QStringLiteral("a tensor that is unknown or there twice");
    const auto& shape = expected->extent;
    if (extent != std::array<qint32, mostDimensions>{shape[0], shape[1], shape[2], 1} ||
        type != expected->type)
        return QStringLiteral("the tensor %1 with other dimensions or weights").arg(QString::fromUtf8(name));
    const qint64 end = m_file.position() + expected->byteCount();
    if (end > m_file.size() || !m_file.seek(end))
        return ended("tensors");
    m_facts.weightBytes += expected->byteCount();
    m_missing.erase(expected);
    return {};
}

} // namespace

qint64 ModelFacts::neededMemory() const
{
    constexpr qint64 paddedText = 512;
    constexpr qint64 paddedAudio = 1536;
    // When the first decoding fails, five are made side by side, with room for two more.
    constexpr qint64 decoders = 7;
    // A key and a value of two bytes each.
    const qint64 cacheRow = qint64{4} * header.audioState;
    const qint64 caches =
        cacheRow * header.textLayers * (paddedText * decoders + paddedAudio) + cacheRow * paddedAudio;
    // The encoder's graphs: measured as 79 to 90 kB for each unit of width.
    const qint64 encoder = qint64{90'000} * header.audioState;
    // A weight for every word at each position of the longest prompt.
    constexpr qint64 longestPrompt = 228;
    const qint64 decoder = qint64{4} * header.vocabulary * longestPrompt;
    // Spectrogram, samples, vocabulary, bookkeeping.
    constexpr qint64 rest = 64'000'000;
    return weightBytes + caches + encoder + decoder + rest;
}

qint64 ModelFacts::neededAddressSpace() const
{
    // The library sets aside, and hardly touches: a weight for every word at every position, twice, and what
    // its four schedulers plan in, measured as 79 MB each.
    const qint64 positions = qint64{2} * 4 * header.vocabulary * header.textContext;
    constexpr qint64 schedulers = qint64{4} * 80'000'000;
    return neededMemory() + positions + schedulers;
}

Result<ModelFacts, QString> checkModelFile(QIODevice& file)
{
    return ModelFileWalk(file).walk();
}

} // namespace tulvane
