#pragma once

#include <base/Result.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace tulvane {

/// Other programs. Any thread.
class Processes {
public:
    Processes() = default;
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;
    virtual ~Processes() = default;

    /// Runs the program (an absolute path), its output to the null device, and waits for it: the calling
    /// thread is blocked meanwhile. The exit status, -1 after a crash; none when it could not be launched.
    [[nodiscard]] virtual std::optional<int> run(const QString& program, const QStringList& arguments) = 0;

    /// Starts the program (an absolute path) and leaves it to itself: it goes on when this process ends, and
    /// says what it says where this process does. Fails with the reason, in words.
    [[nodiscard]] virtual Result<void, QString> startDetached(const QString& program,
                                                              const QStringList& arguments) = 0;
};

} // namespace tulvane
