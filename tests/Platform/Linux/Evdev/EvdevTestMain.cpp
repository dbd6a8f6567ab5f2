#include <gmock/gmock.h>

#include <QByteArray>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

/// The devices are there only for a process that umockdev has been loaded into before everything else.
int main(int argc, char **argv)
{
    constexpr const char *preloaded = "LD_PRELOAD";
    const QByteArray library = "libumockdev-preload.so.0";
    if (!qgetenv(preloaded).contains(library)) {
        const QByteArray others = qgetenv(preloaded);
        qputenv(preloaded, others.isEmpty() ? library : library + ':' + others);
        ::execv("/proc/self/exe", argv);
        std::perror("execv");
        return EXIT_FAILURE;
    }
    ::testing::InitGoogleMock(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
