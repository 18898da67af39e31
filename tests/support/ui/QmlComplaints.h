#pragma once

#include <gtest/gtest.h>

namespace tulvane::test {

/// Fails each test during which the QML engine complained: of a binding that depends on itself, of a value
/// that is not there. From `install` on, for the whole process. Main thread.
class QmlComplaints final : public testing::EmptyTestEventListener {
public:
    /// Before the tests run.
    static void install();

    void OnTestStart(const testing::TestInfo& test) override;
    void OnTestEnd(const testing::TestInfo& test) override;
};

} // namespace tulvane::test
