#pragma once

#include <ports/ModifierEvents.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace tulvane::test {

/// A port with a keyboard in front of it; keys by their macOS virtual key code.
class ModifierEventsBackend {
public:
    ModifierEventsBackend() = default;
    ModifierEventsBackend(const ModifierEventsBackend&) = delete;
    ModifierEventsBackend& operator=(const ModifierEventsBackend&) = delete;
    virtual ~ModifierEventsBackend() = default;

    [[nodiscard]] virtual ModifierEvents& events() = 0;
    virtual void press(quint32 keyCode) = 0;
    virtual void release(quint32 keyCode) = 0;
};

struct ModifierBackendFactory {
    std::string name;
    std::function<std::unique_ptr<ModifierEventsBackend>()> make;
};

/// Runs over every backend.
class ModifierEventsContract : public testing::TestWithParam<ModifierBackendFactory> {};

} // namespace tulvane::test
