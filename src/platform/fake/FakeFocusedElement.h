#pragma once

#include <ports/FocusedElement.h>

#include <QStringList>

#include <utility>

namespace tulvane {

/// What a scripted element is like, and what was done to it.
struct FakeElementScript {
    bool present = true;
    bool isSettable = true;
    bool writeSucceeds = true;
    bool writeApplies = true;   ///< false: accepts a write and ignores it
    bool writeIsSilent = false; ///< a write is neither taken nor refused
    std::optional<QString> role = QStringLiteral("AXTextField");
    std::optional<QString> value = QString();
    /// What is selected in the value, from index to index; both are the caret where nothing is. The end of
    /// the value where not set.
    std::optional<std::pair<qsizetype, qsizetype>> selection;
    QStringList written;
};

/// An element over a script that the test holds.
class FakeFocusedElement final : public FocusedElement {
public:
    explicit FakeFocusedElement(std::shared_ptr<FakeElementScript> script) : m_script(std::move(script)) {}

    [[nodiscard]] QFuture<bool> settable() override
    {
        return QtFuture::makeReadyFuture(m_script->isSettable);
    }
    [[nodiscard]] QFuture<std::optional<QString>> role() override
    {
        return QtFuture::makeReadyFuture(m_script->role);
    }
    [[nodiscard]] QFuture<bool> setSelectedText(const QString& text) override
    {
        m_script->written.append(text);
        const bool succeeds = m_script->writeSucceeds && !m_script->writeIsSilent;
        if (succeeds && m_script->writeApplies && m_script->value)
            replaceSelection(text);
        return QtFuture::makeReadyFuture(succeeds);
    }
    [[nodiscard]] bool mayStillArrive() const override { return m_script->writeIsSilent; }
    [[nodiscard]] QFuture<std::optional<QString>> value() override
    {
        return QtFuture::makeReadyFuture(m_script->value);
    }

private:
    void replaceSelection(const QString& text)
    {
        QString& value = *m_script->value;
        const auto [start, end] = m_script->selection.value_or(std::pair(value.size(), value.size()));
        value.replace(start, end - start, text);
        if (m_script->selection)
            m_script->selection = std::pair(start + text.size(), start + text.size());
    }

    std::shared_ptr<FakeElementScript> m_script;
};

/// Hands out the scripted element.
class FakeFocusedElements final : public FocusedElements {
public:
    [[nodiscard]] QFuture<std::shared_ptr<FocusedElement>> focused() override
    {
        ++asked;
        std::shared_ptr<FocusedElement> element;
        if (script->present)
            element = std::make_shared<FakeFocusedElement>(script);
        return QtFuture::makeReadyFuture(element);
    }

    std::shared_ptr<FakeElementScript> script = std::make_shared<FakeElementScript>();
    int asked = 0;
};

} // namespace tulvane
