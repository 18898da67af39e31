#pragma once

#include <QList>
#include <QString>

namespace tulvane {

/// A graphics card as the system's kernel knows it, whether or not any driver can compute on it.
struct GraphicsCard {
    QString vendor;           ///< "NVIDIA", "AMD", "Intel"; a number where it is another
    QString node;             ///< what a driver has to open; empty where the kernel gives none
    bool isAccessible = true; ///< whether this process may open it

    [[nodiscard]] friend bool operator==(const GraphicsCard&, const GraphicsCard&) = default;
};

/// The machine's cards. Any thread; asked anew at each call, which takes no more than a few milliseconds and
/// loads no driver.
class GraphicsCards {
public:
    GraphicsCards() = default;
    GraphicsCards(const GraphicsCards&) = delete;
    GraphicsCards& operator=(const GraphicsCards&) = delete;
    virtual ~GraphicsCards() = default;

    [[nodiscard]] virtual QList<GraphicsCard> cards() const = 0;
};

} // namespace tulvane
