#include "DownloadRig.h"
#include "SmallDisk.h"

#include <support/Await.h>
#include <support/Soak.h>

#include <QStorageInfo>

namespace tulvane {
namespace {

using test::DownloadRig;
using test::ScratchFolder;
using test::SmallDisk;
using test::TransferKind;
using test::waitUntil;

constexpr qint64 size = 3'000'000;

class DiskFull : public ::testing::TestWithParam<TransferKind> {
protected:
    void SetUp() override
    {
        if (!m_disk.isMounted())
            GTEST_SKIP() << "a small disk can only be mounted by root";
        m_rig.folders.models = m_disk.path() + QStringLiteral("/Tulvane/Models");
    }
    void fill(qint64 bytes) const
    {
        QFile filler(m_disk.path() + QStringLiteral("/filler"));
        ASSERT_TRUE(filler.open(QIODevice::WriteOnly));
        const QByteArray block(64 * 1024, 'f');
        while (filler.size() < bytes && filler.write(block) == block.size() && filler.flush()) {
        }
    }
    void empty() const { ASSERT_TRUE(QFile::remove(m_disk.path() + QStringLiteral("/filler"))); }
    void expectFull(const ModelState& state) const
    {
        EXPECT_EQ(state.kind(), ModelState::Kind::failed);
        EXPECT_TRUE(state.message().startsWith(QStringLiteral("There is not enough free disk space: ")))
            << qPrintable(state.message());
        EXPECT_FALSE(QFile::exists(m_rig.folders.modelFile(m_rig.model.id)));
    }

    SmallDisk m_disk{8 * 1024 * 1024};
    DownloadRig m_rig{GetParam(), size};
};

TEST_P(DiskFull, ADiskThatIsTooSmallIsToldBeforeAnythingIsAsked)
{
    ASSERT_TRUE(m_disk.resize(2 * 1024 * 1024));
    auto program = m_rig.launch();
    expectFull(m_rig.download(program));
    EXPECT_TRUE(m_rig.askedFrom().isEmpty());
    EXPECT_TRUE(m_rig.files().isEmpty());
    ASSERT_TRUE(m_disk.resize(8 * 1024 * 1024));
    m_rig.expectInstalled(program);
}

TEST_P(DiskFull, TheReserveIsLeftFree)
{
    m_rig.http.reserve = 7 * 1024 * 1024;
    auto program = m_rig.launch();
    expectFull(m_rig.download(program));
    EXPECT_TRUE(m_rig.askedFrom().isEmpty());
}

TEST_P(DiskFull, ADiskThatFillsUpMeanwhileIsToldAndTheBytesAreGoneOnFrom)
{
    const int count = test::soakCount(1, 20);
    for (int i = 0; i < count && !HasFailure(); ++i) {
        m_rig.publish(test::randomModel(size));
        auto program = m_rig.launch();
        m_rig.script({{{QStringLiteral("rate"), 4'000'000}}});
        program.manager->download(m_rig.model);
        ASSERT_TRUE(waitUntil([&] { return program.manager->state(m_rig.model.id).fraction() > 0.1; }));
        fill(8 * 1024 * 1024);
        ASSERT_TRUE(waitUntil(
            [&] { return program.manager->state(m_rig.model.id).kind() == ModelState::Kind::failed; }));
        expectFull(program.manager->state(m_rig.model.id));
        EXPECT_GT(m_rig.partialBytes(), size / 10);
        empty();
        const qsizetype before = m_rig.askedFrom().size();
        m_rig.expectInstalled(program);
        EXPECT_GT(m_rig.askedFrom().at(before), 0);
        ASSERT_TRUE(program.manager->deleteModel(m_rig.model));
    }
}

TEST_P(DiskFull, WithoutAnyRoomTheDiskIsBlamed)
{
    fill(8 * 1024 * 1024);
    auto program = m_rig.launch();
    expectFull(m_rig.download(program));
    EXPECT_TRUE(m_rig.askedFrom().isEmpty());
    empty();
    m_rig.expectInstalled(program);
}

TEST_P(DiskFull, TheReserveStaysFreeWhateverOthersWrite)
{
    m_rig.http.reserve = 2 * 1024 * 1024;
    auto program = m_rig.launch();
    m_rig.script({{{QStringLiteral("rate"), 4'000'000}}});
    program.manager->download(m_rig.model);
    ASSERT_TRUE(waitUntil([&] { return program.manager->state(m_rig.model.id).fraction() > 0.1; }));
    fill(4 * 1024 * 1024);
    ASSERT_TRUE(
        waitUntil([&] { return program.manager->state(m_rig.model.id).kind() == ModelState::Kind::failed; }));
    expectFull(program.manager->state(m_rig.model.id));
    EXPECT_GE(QStorageInfo(m_disk.path()).bytesAvailable(), m_rig.http.reserve);
}

TEST_P(DiskFull, WhatEndedForRoomGoesOnOnlyWhenAsked)
{
    {
        auto program = m_rig.launch();
        m_rig.script({{{QStringLiteral("rate"), 4'000'000}}});
        program.manager->download(m_rig.model);
        ASSERT_TRUE(waitUntil([&] { return program.manager->state(m_rig.model.id).fraction() > 0.1; }));
        fill(8 * 1024 * 1024);
        ASSERT_TRUE(waitUntil(
            [&] { return program.manager->state(m_rig.model.id).kind() == ModelState::Kind::failed; }));
    }
    ASSERT_TRUE(m_rig.waitForNoHelper());
    empty();
    const qsizetype asked = m_rig.askedFrom().size();
    auto next = m_rig.launch();
    EXPECT_EQ(next.manager->state(m_rig.model.id), ModelState::notDownloaded());
    EXPECT_FALSE(waitUntil([&] { return m_rig.askedFrom().size() > asked; }, std::chrono::milliseconds(500)));
    EXPECT_GT(next.manager->leftoverBytes(), 0);
    m_rig.expectInstalled(next);
    EXPECT_GT(m_rig.askedFrom().at(asked), 0);
}

TEST_P(DiskFull, ModelsOnAnotherDiskThroughALinkAreDownloadedThere)
{
    const QString target = m_disk.path() + QStringLiteral("/models");
    ASSERT_TRUE(QDir().mkpath(target));
    const ScratchFolder home;
    ASSERT_TRUE(QDir().mkpath(home.file(QStringLiteral("Tulvane"))));
    m_rig.folders.models = home.file(QStringLiteral("Tulvane/Models"));
    ASSERT_TRUE(QFile::link(target, m_rig.folders.models));
    auto program = m_rig.launch();
    m_rig.expectInstalled(program);
    EXPECT_TRUE(QFile::exists(target + u'/' + m_rig.model.id + u".bin"));
    EXPECT_EQ(QDir(home.file(QStringLiteral("Tulvane"))).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("Models")});
}

INSTANTIATE_TEST_SUITE_P(Kinds, DiskFull, ::testing::Values(TransferKind::inProcess, TransferKind::detached),
                         [](const auto& kind) {
                             return std::string(kind.param == TransferKind::inProcess ? "InProcess"
                                                                                      : "Detached");
                         });

} // namespace
} // namespace tulvane
