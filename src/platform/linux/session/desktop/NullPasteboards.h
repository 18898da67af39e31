#pragma once

#include <ports/Pasteboard.h>

namespace tulvane {

/// The pasteboard of a desktop that has none: always empty, and takes nothing. Main thread.
class NullPasteboard final : public Pasteboard {
public:
    [[nodiscard]] QFuture<PasteboardContents> contents() override
    {
        return QtFuture::makeReadyFuture(PasteboardContents{{}, true});
    }
    [[nodiscard]] qint64 changeCount() override { return 0; }
    bool replaceFor(const QList<PasteboardItem>& /*items*/, const PasteTarget& /*target*/) override
    {
        return false;
    }
    void clear() override {}
    [[nodiscard]] qint64 ownChangeCount() const override { return 0; }
    bool replaceUnlessChanged(const QList<PasteboardItem>& /*items*/, qint64 /*count*/) override
    {
        return false;
    }
    [[nodiscard]] Reading reading() const override { return Reading::untold; }
    void setActivityHandler(std::function<void()> /*handler*/) override {}
};

class NullPasteboards final : public Pasteboards {
public:
    [[nodiscard]] PasteTarget pasteTarget() override { return {}; }
    [[nodiscard]] Pasteboard& of(PasteSelection /*selection*/) override { return m_board; }
    void readAhead() override {}

private:
    NullPasteboard m_board;
};

} // namespace tulvane
