#pragma once

#include <ports/RemoteControl.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace tulvane::test {

/// A desktop on which processes can reach each other.
class RemoteControlBackend {
public:
    RemoteControlBackend() = default;
    RemoteControlBackend(const RemoteControlBackend&) = delete;
    RemoteControlBackend& operator=(const RemoteControlBackend&) = delete;
    virtual ~RemoteControlBackend() = default;

    /// One process's end.
    [[nodiscard]] virtual std::unique_ptr<RemoteControl> process() = 0;
    /// One process's end where nothing can be reached.
    [[nodiscard]] virtual std::unique_ptr<RemoteControl> lonelyProcess() = 0;
};

struct RemoteBackendFactory {
    std::string name;
    std::function<std::unique_ptr<RemoteControlBackend>()> make;
};

/// Runs over every backend.
class RemoteControlContract : public testing::TestWithParam<RemoteBackendFactory> {};

} // namespace tulvane::test
