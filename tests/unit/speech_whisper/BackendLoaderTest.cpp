#include <speech/whisper/BackendLoader.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

TEST(BackendLoader, theEnvironmentNamesNoLibraryToLoad)
{
    qputenv("GGML_BACKEND_PATH", "/tmp/elsewhere.so");
    ignoreBackendsOfTheEnvironment();
    EXPECT_FALSE(qEnvironmentVariableIsSet("GGML_BACKEND_PATH"));
}

TEST(BackendLoader, anAbsentOrEmptyFolderOrOneOfForeignFilesIsNoError)
{
    const test::ScratchFolder folder;
    const bool canCompute = loadBackends(folder.file(u"absent"_qs));
    EXPECT_EQ(loadBackends(folder.path()), canCompute);
    folder.write(u"libggml-cpu-broken.so"_qs, "this is no library");
    EXPECT_EQ(loadBackends(folder.path() + u"/."_qs), canCompute);
    EXPECT_EQ(loadBackends(u"relative"_qs), canCompute);
    EXPECT_EQ(loadBackends(QString()), canCompute);
}

} // namespace
} // namespace tulvane
