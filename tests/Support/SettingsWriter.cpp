// Another process that changes settings, for tests to run concurrently and to kill.
//
//   talmo-settings-writer FILE PREFIX COUNT    sets PREFIX0, PREFIX1 …, printing "set" after each,
//                                              until COUNT (0: forever)

#include "Platform/Linux/System/JsonUserDefaults.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    talmo::JsonUserDefaults defaults(arguments.at(1), talmo::SerialExecutor::onNewThread(QStringLiteral("writer")));
    const int count = arguments.at(3).toInt();
    const QString filler(20000, QLatin1Char('x')); // Large enough for a kill to hit in the middle of a write.
    for (int number = 0; count == 0 || number < count; ++number) {
        constexpr int keys = 50;
        defaults.set(arguments.at(2) + QString::number(number % keys), filler + QString::number(number));
        defaults.written().waitForFinished();
        std::puts("set");
        std::fflush(stdout);
    }
    return EXIT_SUCCESS;
}
