#include <platform/fake/FakeWorkspace.h>
#include <platform/linux/desktop/DesktopWorkspace.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// Either backend, on a desktop that shows things until its programs are removed.
class FakeDesktop {
public:
    [[nodiscard]] Workspace& workspace() { return m_workspace; }
    void removePrograms() { m_workspace.refuses = true; }
    [[nodiscard]] QUrl shown() const
    {
        if (!m_workspace.revealed.isEmpty())
            return QUrl::fromLocalFile(m_workspace.revealed.last());
        return m_workspace.opened.isEmpty() ? QUrl() : m_workspace.opened.last();
    }
    /// Whether the request for this settings page came to something.
    [[nodiscard]] bool hasShownSettings(const QUrl& pane) const { return shown() == pane; }

private:
    FakeWorkspace m_workspace;
};

/// A desktop without settings pages of its own, whose one program notes what it is given.
class FreedesktopDesktop {
public:
    FreedesktopDesktop()
    {
        qputenv("PATH", m_programs.path().toUtf8());
        const QByteArray notes = m_notes.file(QStringLiteral("shown")).toUtf8();
        const QString opener = m_programs.write(QStringLiteral("xdg-open"),
                                                "#!/bin/sh\nprintf %s \"$1\" > '" + notes +
                                                    ".part'\n/bin/mv '" + notes + ".part' '" + notes + "'\n");
        QFile::setPermissions(opener, QFile::ReadOwner | QFile::ExeOwner);
    }
    FreedesktopDesktop(const FreedesktopDesktop&) = delete;
    FreedesktopDesktop& operator=(const FreedesktopDesktop&) = delete;
    ~FreedesktopDesktop() { qputenv("PATH", m_path); }

    [[nodiscard]] Workspace& workspace() { return m_workspace; }
    void removePrograms() { QFile::remove(m_programs.file(QStringLiteral("xdg-open"))); }
    [[nodiscard]] QUrl shown() const { return QUrl::fromEncoded(m_notes.read(QStringLiteral("shown"))); }
    [[nodiscard]] bool hasShownSettings(const QUrl&) const { return shown().scheme() == u"file"; }

private:
    const QByteArray m_path = qgetenv("PATH");
    ScratchFolder m_programs;
    ScratchFolder m_notes;
    DesktopWorkspace m_workspace{{}, QUrl(QStringLiteral("file:///doc/permissions.html"))};
};

template <class Desktop>
class WorkspaceContract : public testing::Test {
protected:
    Desktop m_desktop;
    Workspace& m_workspace = m_desktop.workspace();
};

using Desktops = testing::Types<FakeDesktop, FreedesktopDesktop>;
TYPED_TEST_SUITE(WorkspaceContract, Desktops);

const QUrl page(QStringLiteral("https://example.org/a b?c=å#d"));
const QUrl
    settings(QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));

} // namespace

TYPED_TEST(WorkspaceContract, OpensAUrlAsItIs)
{
    EXPECT_TRUE(this->m_workspace.open(page));
    EXPECT_TRUE(waitUntil([this] { return this->m_desktop.shown() == page; }));
}

TYPED_TEST(WorkspaceContract, RevealsAFolderWhateverItIsCalled)
{
    const ScratchFolder parent;
    const QString folder = parent.file(QStringLiteral("50% of blåbær & #1"));
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_TRUE(this->m_workspace.reveal(folder));
    EXPECT_TRUE(waitUntil([&] { return this->m_desktop.shown() == QUrl::fromLocalFile(folder); }))
        << qPrintable(this->m_desktop.shown().toString());
}

TYPED_TEST(WorkspaceContract, ASettingsPageComesToSomething)
{
    EXPECT_TRUE(this->m_workspace.open(settings));
    EXPECT_TRUE(waitUntil([this] { return this->m_desktop.hasShownSettings(settings); }));
}

TYPED_TEST(WorkspaceContract, SaysWhenNothingCouldBeStarted)
{
    this->m_desktop.removePrograms();
    EXPECT_FALSE(this->m_workspace.open(page));
    EXPECT_FALSE(this->m_workspace.open(settings));
    EXPECT_FALSE(this->m_workspace.reveal(QDir::rootPath()));
}

} // namespace tulvane::test
