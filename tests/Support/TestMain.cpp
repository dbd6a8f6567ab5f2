#include <gmock/gmock.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
