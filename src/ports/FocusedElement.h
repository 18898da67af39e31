#pragma once

#include <QFuture>
#include <QString>

#include <memory>
#include <optional>

namespace tulvane {

/// The user-interface element that has the keyboard focus, in whichever program. Main thread; every answer
/// comes later, since the other program may take seconds. Every future finishes with a result: what could not
/// be asked counts as "no", or as nothing read.
class FocusedElement {
public:
    /// The role of a password field, on every desktop.
    static inline const QString secureTextFieldRole = QStringLiteral("AXSecureTextField");

    FocusedElement() = default;
    FocusedElement(const FocusedElement&) = delete;
    FocusedElement& operator=(const FocusedElement&) = delete;
    virtual ~FocusedElement() = default;

    /// Whether the selected text can be set.
    [[nodiscard]] virtual QFuture<bool> settable() = 0;
    [[nodiscard]] virtual QFuture<std::optional<QString>> role() = 0;
    /// Replaces the selection, or inserts at the caret. False when the element reported a failure.
    [[nodiscard]] virtual QFuture<bool> setSelectedText(const QString& text) = 0;
    /// After a false of `setSelectedText`: whether the text may come all the same, since the program has not
    /// answered at all. It must not be put there in another way then.
    [[nodiscard]] virtual bool mayStillArrive() const = 0;
    /// The element's whole text.
    [[nodiscard]] virtual QFuture<std::optional<QString>> value() = 0;
};

/// Finds the focused element. Main thread.
class FocusedElements {
public:
    FocusedElements() = default;
    FocusedElements(const FocusedElements&) = delete;
    FocusedElements& operator=(const FocusedElements&) = delete;
    virtual ~FocusedElements() = default;

    /// Null when there is none, or none that can be spoken to. The future always finishes with a result.
    [[nodiscard]] virtual QFuture<std::shared_ptr<FocusedElement>> focused() = 0;
};

} // namespace tulvane
