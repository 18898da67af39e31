#pragma once

#include "ModelFiles.h"

#include <models/ModelManager.h>
#include <platform/fake/FakeBackgroundTransfers.h>
#include <support/Await.h>
#include <support/LogCapture.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace tulvane::test {

/// A manager of two small entries over faked transfers and a scratch folder.
class ManagerFixture : public ::testing::Test {
protected:
    using State = ModelManager::State;
    using Kind = ModelState::Kind;

    ManagerFixture()
        : m_options{.folders = {m_scratch.file(QStringLiteral("Tulvane/Models")),
                                m_scratch.file(QStringLiteral("tmp"))},
                    .hub = QUrl(QStringLiteral("https://hub.example/")),
                    .mode = ModelManager::SessionMode::ordinary,
                    .catalogue = {m_model, m_other}}
    {
        QDir().mkpath(m_options.folders.temporary);
    }

    ModelManager& manager()
    {
        if (!m_manager)
            m_manager = std::make_unique<ModelManager>(m_options, m_transfers);
        return *m_manager;
    }
    [[nodiscard]] State state() { return manager().state(m_model.id); }
    [[nodiscard]] TransferId task() const { return m_transfers.lastTask(); }
    [[nodiscard]] bool waitForState(Kind kind)
    {
        return waitUntil([&] { return state().kind() == kind; });
    }
    /// A download that ends well, up to the state `ready`.
    void install()
    {
        manager().download(m_model);
        m_transfers.tellFinished(task(), 200, tinyBody());
        m_transfers.tellCompleted(task());
        ASSERT_TRUE(waitForState(Kind::ready));
    }
    [[nodiscard]] QStringList modelsFolder() const
    {
        return QDir(m_options.folders.models).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    [[nodiscard]] QStringList temporaryFolder() const
    {
        return QDir(m_options.folders.temporary).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    ScratchFolder m_scratch;
    WhisperModel m_model = tinyModel();
    WhisperModel m_other = tinyModel(QStringLiteral("other"));
    ModelManager::Options m_options;
    FakeBackgroundTransfers m_transfers;
    std::unique_ptr<ModelManager> m_manager;
};

} // namespace tulvane::test
