#pragma once

#include <platform/linux/wayland/clipboard/DataControlProtocol.h>
#include <platform/linux/wayland/clipboard/FileDescriptor.h>

#include <QStringList>

namespace tulvane {

/// What a selection's owner offers. Of the thread of its connection.
class DataControlOffer final {
public:
    /// Takes the object over.
    explicit DataControlOffer(zwlr_data_control_offer_v1* object);
    DataControlOffer(const DataControlOffer&) = delete;
    DataControlOffer& operator=(const DataControlOffer&) = delete;
    ~DataControlOffer();

    [[nodiscard]] const zwlr_data_control_offer_v1* object() const { return m_object; }
    /// The types of content, in the owner's order.
    [[nodiscard]] const QStringList& types() const { return m_types; }
    /// Asks the owner for one type. The end of a pipe that the owner writes it into; the caller flushes the
    /// connection.
    [[nodiscard]] FileDescriptor receive(const QString& type);

private:
    zwlr_data_control_offer_v1* m_object;
    QStringList m_types;
};

} // namespace tulvane
