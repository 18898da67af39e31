#pragma once

#include <platform/linux/wayland/clipboard/DataControlPasteboards.h>
#include <support/Await.h>
#include <support/wayland/WaylandDesktop.h>
#include <support/wayland/selections/SelectionCompositor.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace tulvane::test {

/// Tells of a program in front what the test says.
class ScriptedFront final : public FrontPrograms {
public:
    [[nodiscard]] FrontProgram current() override { return program; }
    FrontProgram program{7, {QStringLiteral("editor")}, 0, false};
};

/// A program of another process that reads the clipboard as often as it is told to.
class ClipboardProgram final {
public:
    template <class Desktop>
    ClipboardProgram(Desktop& desktop, const QString& name)
        : m_seen(QDir(desktop.home()).filePath(name)),
          m_process(desktop.start(
              QStringLiteral("/bin/sh"),
              {QStringLiteral("-c"),
               QStringLiteral(
                   "while read word; do wl-paste $word > \"$0.part\"; mv \"$0.part\" \"$0\"; done"),
               m_seen}))
    {
    }

    [[nodiscard]] quint32 id() const { return static_cast<quint32>(m_process.processId()); }
    /// What it has read, once it has; `how` are wl-paste's options.
    [[nodiscard]] QByteArray read(const QByteArray& how = "-n")
    {
        QFile::remove(m_seen);
        m_process.write(how + '\n');
        EXPECT_TRUE(waitUntil([&] { return QFile::exists(m_seen); }));
        QFile file(m_seen);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

private:
    QString m_seen;
    QProcess& m_process;
};

/// A pasteboard of ours on a compositor, and the programs around it.
template <class Desktop>
class DataControlWorld {
public:
    /// `about` the desktop, as its constructor takes it.
    template <class About>
    explicit DataControlWorld(const About& about) : m_desktop(about)
    {
        m_front->program.process = m_reader.id();
    }
    Pasteboard& board() { return m_ours->general(); }
    DataControlPasteboards& boards() { return *m_ours; }
    Desktop& desktop() { return m_desktop; }
    ScriptedFront& scriptedFront() { return *m_front; }
    PasteTarget front() { return m_ours->pasteTarget(); }
    void otherWrites(const QList<PasteboardItem>& items) { m_other->general().replace(items); }
    void otherClears() { m_other->general().clear(); }
    /// Both read after the keys went out.
    void frontReads()
    {
        m_ours->expectReader(front());
        EXPECT_FALSE(m_reader.read().isEmpty());
    }
    void backgroundReads()
    {
        m_ours->expectReader(front());
        EXPECT_FALSE(m_manager.read().isEmpty());
    }
    ClipboardProgram& reader() { return m_reader; }

private:
    [[nodiscard]] std::unique_ptr<DataControlPasteboards> open()
    {
        return DataControlPasteboards::open(WaylandConnection::socketOf(m_desktop.environment()), m_front,
                                            {{QStringLiteral("foot"), PasteChord::controlShiftV}});
    }

    Desktop m_desktop;
    std::shared_ptr<ScriptedFront> m_front = std::make_shared<ScriptedFront>();
    ClipboardProgram m_reader{m_desktop, QStringLiteral("front")};
    ClipboardProgram m_manager{m_desktop, QStringLiteral("manager")};
    std::unique_ptr<DataControlPasteboards> m_ours = open();
    std::unique_ptr<DataControlPasteboards> m_other = open();
};

class SwayWorld final : public DataControlWorld<WaylandDesktop> {
public:
    static constexpr auto desktopKind = WaylandDesktop::Kind::sway;
    SwayWorld() : DataControlWorld(WaylandDesktop::Kind::sway) {}
};

class KWinWorld final : public DataControlWorld<WaylandDesktop> {
public:
    static constexpr auto desktopKind = WaylandDesktop::Kind::kwin;
    KWinWorld() : DataControlWorld(WaylandDesktop::Kind::kwin) {}
};

/// A compositor that has the newer interface alone.
class ExtWorld final : public DataControlWorld<SelectionCompositor> {
public:
    ExtWorld() : DataControlWorld(SelectionCompositor::Options{}) {}
};

/// The older one alone, of a compositor that keeps to the letter.
class WlrWorld final : public DataControlWorld<SelectionCompositor> {
public:
    WlrWorld() : DataControlWorld(SelectionCompositor::Options{.ours = {SelectionServer::Protocol::wlr}}) {}
};

} // namespace tulvane::test
