#include <platform/linux/formats/ClipboardFormat.h>
#include <platform/linux/wayland/clipboard/DataControlOffer.h>

#include <fcntl.h>

#include <array>

namespace tulvane {

DataControlOffer::DataControlOffer(zwlr_data_control_offer_v1* object) : m_object(object)
{
    static const zwlr_data_control_offer_v1_listener events{
        [](void* data, zwlr_data_control_offer_v1*, const char* type) {
            QStringList& types = static_cast<DataControlOffer*>(data)->m_types;
            const QString name = QString::fromUtf8(type);
            if (isContentTarget(name) && !types.contains(name))
                types.append(name);
        }};
    zwlr_data_control_offer_v1_add_listener(m_object, &events, this);
}

DataControlOffer::~DataControlOffer()
{
    zwlr_data_control_offer_v1_destroy(m_object);
}

FileDescriptor DataControlOffer::receive(const QString& type)
{
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return FileDescriptor();
    const FileDescriptor writing(ends[1]);
    zwlr_data_control_offer_v1_receive(m_object, type.toUtf8().constData(), writing.get());
    return FileDescriptor(ends[0]);
}

} // namespace tulvane
