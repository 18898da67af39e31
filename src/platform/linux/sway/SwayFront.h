#pragma once

#include <platform/linux/front/FrontProgram.h>
#include <platform/linux/sway/SwayConnection.h>

#include <QJsonObject>

#include <memory>

namespace tulvane {

/// The program in front on sway: its tree holds the application id and the process of each window. Main
/// thread.
class SwayFront final : public FrontPrograms {
public:
    explicit SwayFront(std::shared_ptr<SwayConnection> connection) : m_connection(std::move(connection)) {}

    [[nodiscard]] FrontProgram current() override;

    /// The focused window of a tree.
    [[nodiscard]] static FrontProgram inTree(const QJsonObject& node);

private:
    std::shared_ptr<SwayConnection> m_connection;
};

} // namespace tulvane
