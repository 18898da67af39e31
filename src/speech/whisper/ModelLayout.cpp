#include <speech/whisper/ModelLayout.h>

namespace tulvane {

namespace {

/// Collects the tensors of one model.
class Layout final {
public:
    explicit Layout(const ModelHeader& header)
        : m_header(header),
          m_width(header.audioState),
          m_weights(*header.weightType())
    {
    }

    QHash<QByteArray, TensorShape> all()
    {
        addEncoder();
        addDecoder();
        return std::move(m_tensors);
    }

private:
    void add(const QByteArray& name, std::array<qint32, 3> extent, ggml_type type)
    {
        m_tensors.insert(name, {extent, type});
    }
    void addVector(const QByteArray& name, qint32 length) { add(name, {length, 1, 1}, GGML_TYPE_F32); }
    void addNorm(const QByteArray& name)
    {
        addVector(name + ".weight", m_width);
        addVector(name + ".bias", m_width);
    }
    void addLinear(const QByteArray& name, qint32 from, qint32 to)
    {
        add(name + ".weight", {from, to, 1}, m_weights);
        addVector(name + ".bias", to);
    }
    /// Attention's keys have no bias.
    void addAttention(const QByteArray& name)
    {
        addLinear(name + ".query", m_width, m_width);
        add(name + ".key.weight", {m_width, m_width, 1}, m_weights);
        addLinear(name + ".value", m_width, m_width);
        addLinear(name + ".out", m_width, m_width);
    }
    void addPerceptron(const QByteArray& block)
    {
        addNorm(block + ".mlp_ln");
        addLinear(block + ".mlp.0", m_width, 4 * m_width);
        addLinear(block + ".mlp.2", 4 * m_width, m_width);
    }
    void addConvolution(const QByteArray& name, qint32 from)
    {
        // Convolutions are never quantized.
        add(name + ".weight", {3, from, m_width}, GGML_TYPE_F16);
        add(name + ".bias", {1, m_width, 1}, GGML_TYPE_F32);
    }
    void addEncoder()
    {
        add("encoder.positional_embedding", {m_width, m_header.audioContext, 1}, GGML_TYPE_F32);
        addConvolution("encoder.conv1", m_header.mels);
        addConvolution("encoder.conv2", m_width);
        addNorm("encoder.ln_post");
        for (qint32 layer = 0; layer < m_header.audioLayers; ++layer) {
            const QByteArray block = "encoder.blocks." + QByteArray::number(layer);
            addPerceptron(block);
            addNorm(block + ".attn_ln");
            addAttention(block + ".attn");
        }
    }
    void addDecoder()
    {
        add("decoder.positional_embedding", {m_width, m_header.textContext, 1}, GGML_TYPE_F32);
        add("decoder.token_embedding.weight", {m_width, m_header.vocabulary, 1}, m_weights);
        addNorm("decoder.ln");
        for (qint32 layer = 0; layer < m_header.textLayers; ++layer) {
            const QByteArray block = "decoder.blocks." + QByteArray::number(layer);
            addPerceptron(block);
            addNorm(block + ".attn_ln");
            addAttention(block + ".attn");
            addNorm(block + ".cross_attn_ln");
            addAttention(block + ".cross_attn");
        }
    }

    const ModelHeader& m_header;
    qint32 m_width;
    ggml_type m_weights;
    QHash<QByteArray, TensorShape> m_tensors;
};

} // namespace

qint64 TensorShape::byteCount() const
{
    return static_cast<qint64>(ggml_row_size(type, extent[0])) * extent[1] * extent[2];
}

QHash<QByteArray, TensorShape> expectedTensors(const ModelHeader& header)
{
    return Layout(header).all();
}

} // namespace tulvane
