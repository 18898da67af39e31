#pragma once

#include <platform/GlobalHotKeys.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tulvane::test {

/// A port with a keyboard in front of it. Keys are pressed by position, with the left-hand modifiers.
class HotKeysBackend {
public:
    HotKeysBackend() = default;
    HotKeysBackend(const HotKeysBackend&) = delete;
    HotKeysBackend& operator=(const HotKeysBackend&) = delete;
    virtual ~HotKeysBackend() = default;

    [[nodiscard]] virtual GlobalHotKeys& hotKeys() = 0;
    /// The modifiers go down first, then the key.
    virtual void press(const KeyCombination& combination) = 0;
    /// The key goes up first, then the modifiers.
    virtual void release(const KeyCombination& combination) = 0;
    /// The modifiers go up first, then the key.
    virtual void releaseModifiersFirst(const KeyCombination& combination) = 0;
    /// Has the keyboard repeat the key that is held, at least that often.
    virtual void awaitRepeats(const KeyCombination& combination, const std::function<int()>& seen,
                              int count) = 0;
    virtual void takeElsewhere(const KeyCombination& combination) = 0;
    virtual void freeElsewhere(const KeyCombination& combination) = 0;
    /// Something about the keyboard changes that names or registrations depend on.
    virtual void changeKeyboard() = 0;
    /// The port is destroyed; only this object's destructor may follow.
    virtual void end() = 0;
};

struct BackendFactory {
    std::string name;
    std::function<std::unique_ptr<HotKeysBackend>()> make;
};

/// Runs the contract over one more backend; called once for each, before the tests are counted.
class GlobalHotKeysContract : public testing::TestWithParam<BackendFactory> {};

} // namespace tulvane::test
