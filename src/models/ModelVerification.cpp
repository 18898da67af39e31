#include <base/ModelSignature.h>
#include <models/ModelVerification.h>

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <openssl/evp.h>

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tulvane {

namespace {

constexpr double leastShare = 0.85;
constexpr double mostShare = 1.15;
constexpr std::size_t chunkBytes = 4'194'304;

struct FreeDigest {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

bool hasSignature(const QString& path)
{
    QFile file(path);
    std::array<char, sizeof(modelSignature)> start{};
    return file.open(QIODevice::ReadOnly) && file.read(start.data(), start.size()) == start.size() &&
           qFromLittleEndian<quint32>(start.data()) == modelSignature;
}

/// Lowercase hexadecimal; none when the file can't be read to its end.
std::optional<QString> sha256Of(const QString& path, const std::atomic<bool>& stop)
{
    QFile file(path);
    const std::unique_ptr<EVP_MD_CTX, FreeDigest> context(EVP_MD_CTX_new());
    if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1 ||
        !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    std::vector<char> chunk(chunkBytes);
    for (;;) {
        const qint64 got = file.read(chunk.data(), static_cast<qint64>(chunk.size()));
        if (got < 0 || stop)
            return std::nullopt;
        if (got == 0)
            break;
        if (EVP_DigestUpdate(context.get(), chunk.data(), static_cast<std::size_t>(got)) != 1)
            return std::nullopt;
    }
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    if (EVP_DigestFinal_ex(context.get(), digest.data(), &size) != 1)
        return std::nullopt;
    const QByteArray bytes(reinterpret_cast<const char*>(digest.data()), static_cast<qsizetype>(size));
    return QString::fromLatin1(bytes.toHex());
}

} // namespace

AcceptedSizes AcceptedSizes::around(qint64 expected)
{
    const auto whole = static_cast<double>(expected);
    return {static_cast<qint64>(whole * leastShare), static_cast<qint64>(whole * mostShare)};
}

Result<void, ModelError> verifyModelFile(const QString& file, const WhisperModel& model,
                                         const std::atomic<bool>& stop)
{
    if (!hasSignature(file))
        return failure(ModelError::notAGGMLFile());
    const qint64 actual = QFileInfo(file).size();
    const AcceptedSizes accepted = AcceptedSizes::around(model.approximateSizeBytes);
    if (actual < accepted.least || actual > accepted.most)
        return failure(ModelError::unexpectedSize(actual, model.approximateSizeBytes));
    if (model.sha256 && sha256Of(file, stop) != model.sha256->toLower())
        return failure(ModelError::checksumMismatch());
    return {};
}

Result<void, ModelError> verifyModelFile(const QString& file, const WhisperModel& model)
{
    const std::atomic<bool> never = false;
    return verifyModelFile(file, model, never);
}

} // namespace tulvane
