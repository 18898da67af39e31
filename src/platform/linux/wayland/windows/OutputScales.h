#pragma once

#include <platform/linux/wayland/connection/WaylandConnection.h>

#include <list>

namespace tulvane {

/// The scales of the screens. Main thread.
class OutputScales final : public QObject {
    Q_OBJECT

public:
    /// `connection` outlives it.
    explicit OutputScales(WaylandConnection& connection);
    Q_DISABLE_COPY_MOVE(OutputScales)
    ~OutputScales() override;

    /// Of the screen with the most pixels to a point: what is drawn for that one is sharp on every other.
    [[nodiscard]] int highest() const;

private:
    struct Output {
        std::uint32_t name;
        wl_output* object;
        int scale = 1;
    };
    void add(const WaylandConnection::Global& global);
    void remove(std::uint32_t name);

    WaylandConnection& m_connection;
    std::list<Output> m_outputs;
};

} // namespace tulvane
