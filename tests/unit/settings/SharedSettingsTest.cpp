#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace tulvane {
namespace {

// The one instance of a process can be made once only, hence one test for all that holds of its making.
TEST(SharedSettings, AreMadeOnceOnFirstUseWhicheverThreadAsksAndBelongToTheMainThread)
{
    std::atomic<int> made = 0;
    AppSettings::setStandardDefaults([&made]() -> std::unique_ptr<UserDefaults> {
        ++made;
        auto defaults = std::make_unique<FakeUserDefaults>();
        (void)defaults->set(u"maxRecordingSeconds"_qs, 77);
        return defaults;
    });
    EXPECT_EQ(made, 0) << "nothing is made before it is asked for";
    std::array<AppSettings*, 8> found{};
    std::vector<std::thread> threads;
    threads.reserve(found.size());
    for (AppSettings*& instance : found)
        threads.emplace_back([&instance] { instance = &AppSettings::shared(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(made, 1);
    for (const AppSettings* const instance : found)
        EXPECT_EQ(instance, &AppSettings::shared());
    EXPECT_EQ(AppSettings::shared().thread(), QCoreApplication::instance()->thread());
    EXPECT_EQ(AppSettings::shared().maxRecordingSeconds(), 77);
}

} // namespace
} // namespace tulvane
