#pragma once

#include <support/VirtualDesktop.h>

#include <QByteArray>
#include <QString>

#include <array>
#include <memory>

namespace tulvane::test {

class JsonProcess;

/// A program of its own with a text field, into which text is to come. Main thread. Throws std::runtime_error
/// when the program does not answer.
class TargetProgram {
public:
    TargetProgram() = default;
    TargetProgram(const TargetProgram&) = delete;
    TargetProgram& operator=(const TargetProgram&) = delete;
    virtual ~TargetProgram() = default;

    /// What the program itself says that it has got since the last `clear()`, in UTF-8.
    [[nodiscard]] virtual QByteArray text() = 0;
    virtual void clear() = 0;
    /// The widget that has the focus in the program: "field" as long as it is the right one.
    [[nodiscard]] virtual QString focus() = 0;
    /// Whether a line break is as good as any other character to it.
    [[nodiscard]] virtual bool takesLineBreaks() const = 0;
    /// The requests of gtk_target.py; null where the program has others.
    [[nodiscard]] virtual JsonProcess* requests() { return nullptr; }
};

enum class Target { gtkEntry, gtkTextView, qtLineEdit, qtTextEdit, chromium, xterm, vteTerminal };

inline constexpr std::array everyTarget{Target::gtkEntry,   Target::gtkTextView, Target::qtLineEdit,
                                        Target::qtTextEdit, Target::chromium,    Target::xterm,
                                        Target::vteTerminal};

/// Starts a program on the desktop; its window and field have the focus when this returns. The desktop
/// outlives it, and ends the program. Throws std::runtime_error when it does not get that far.
[[nodiscard]] std::unique_ptr<TargetProgram> startTarget(Target target, VirtualDesktop& desktop);

/// For the messages of tests.
[[nodiscard]] QString targetName(Target target);

} // namespace tulvane::test
