#include <platform/linux/formats/ClipboardFormat.h>
#include <platform/linux/wayland/clipboard/DataControlSource.h>

#include <QMetaObject>

namespace tulvane {

namespace {

QList<std::pair<QString, QByteArray>> textForms(const QByteArray& utf8)
{
    QList<std::pair<QString, QByteArray>> forms;
    for (const auto* const name : {"text/plain;charset=utf-8", "text/plain", "UTF8_STRING", "TEXT"})
        forms.append({QString::fromLatin1(name), utf8});
    // A text that does not fit is better not read than read wrong.
    const QString text = QString::fromUtf8(utf8);
    if (isLatin1(text))
        forms.append({QStringLiteral("STRING"), text.toLatin1()});
    return forms;
}

} // namespace

DataControlSource::DataControlSource(zwlr_data_control_manager_v1* manager,
                                     const QList<PasteboardItem>& items, Handlers handlers)
    : m_object(zwlr_data_control_manager_v1_create_data_source(manager)),
      m_handlers(std::move(handlers))
{
    static const zwlr_data_control_source_v1_listener events{
        [](void* data, zwlr_data_control_source_v1*, const char* type, std::int32_t pipe) {
            static_cast<DataControlSource*>(data)->send(QString::fromUtf8(type), FileDescriptor(pipe));
        },
        [](void* data, zwlr_data_control_source_v1*) { static_cast<DataControlSource*>(data)->cancel(); }};
    zwlr_data_control_source_v1_add_listener(m_object, &events, this);
    for (const PasteboardItem& item : items)
        offer(item);
}

DataControlSource::~DataControlSource()
{
    zwlr_data_control_source_v1_destroy(m_object);
}

void DataControlSource::offer(const PasteboardItem& item)
{
    const auto offerOne = [this](const QString& type, const QByteArray& bytes) {
        if (m_bytesByType.contains(type))
            return;
        m_bytesByType.insert(type, bytes);
        zwlr_data_control_source_v1_offer(m_object, type.toUtf8().constData());
    };
    for (auto data = item.dataByType.cbegin(); data != item.dataByType.cend(); ++data) {
        if (data.key() != PasteboardItem::plainTextType) {
            offerOne(data.key(), data.value());
            continue;
        }
        for (const auto& [type, bytes] : textForms(data.value()))
            offerOne(type, bytes);
    }
}

void DataControlSource::send(const QString& type, FileDescriptor pipe)
{
    const auto bytes = m_bytesByType.constFind(type);
    if (bytes == m_bytesByType.cend())
        return;
    const bool counts = isTextTarget(type) && m_handlers.counts(pipe.get());
    const auto place = m_writers.emplace(m_writers.end(), std::move(pipe), *bytes);
    place->begin([this, place, counts](bool isWhole) {
        if (isWhole && counts)
            m_handlers.textRead();
        // It is still on this stack.
        QMetaObject::invokeMethod(
            &m_context, [this, place] { m_writers.erase(place); }, Qt::QueuedConnection);
    });
}

void DataControlSource::cancel()
{
    m_isCancelled = true;
    m_handlers.cancelled();
}

} // namespace tulvane
