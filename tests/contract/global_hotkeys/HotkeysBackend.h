#pragma once

#include <ports/GlobalHotkeys.h>

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tulvane::test {

/// A port with a keyboard in front of it. Keys are pressed by position, with the left-hand modifiers.
class HotkeysBackend {
public:
    HotkeysBackend() = default;
    HotkeysBackend(const HotkeysBackend&) = delete;
    HotkeysBackend& operator=(const HotkeysBackend&) = delete;
    virtual ~HotkeysBackend() = default;

    [[nodiscard]] virtual GlobalHotkeys& hotkeys() = 0;
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
    /// What the desktop calls the other program, where it says so.
    [[nodiscard]] virtual QString elsewhereTitle() const { return {}; }
    /// The port is destroyed; only this object's destructor may follow.
    virtual void end() = 0;
};

struct BackendFactory {
    std::string name;
    std::function<std::unique_ptr<HotkeysBackend>()> make;
    /// The packages that the backend lacks on this machine.
    std::function<QStringList()> missing = [] { return QStringList(); };
};

/// Runs the contract over one more backend; called once for each, before the tests are counted.
class GlobalHotkeysContract : public testing::TestWithParam<BackendFactory> {
protected:
    void SetUp() override
    {
        if (const QStringList missing = GetParam().missing(); !missing.isEmpty())
            GTEST_SKIP() << "not installed: " << qPrintable(missing.join(u' '));
    }
};

} // namespace tulvane::test
