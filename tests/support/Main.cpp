#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef __SANITIZE_THREAD__
#include <support/threads/Handover.h>
using Application = tulvane::test::HandoverApplication;
#else
using Application = QCoreApplication;
#endif

int main(int argc, char** argv)
{
    Application app(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
