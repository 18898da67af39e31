#pragma once

#include <ports/GraphicsCards.h>

#include <QString>

namespace tulvane {

/// Cards by the kernel's render nodes (/dev/dri), and NVIDIA's own driver by its nodes where it makes no
/// render nodes, as in a container.
class KernelCards final : public GraphicsCards {
public:
    /// `root` stands before every path that is read; "" is the system itself.
    explicit KernelCards(const QString& root = QString()) : m_root(root) {}

    [[nodiscard]] QList<GraphicsCard> cards() const override;

private:
    [[nodiscard]] GraphicsCard card(const QString& vendor, const QString& node) const;

    QString m_root;
};

} // namespace tulvane
