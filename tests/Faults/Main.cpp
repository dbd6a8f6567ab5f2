#include "Faults/FaultFixture.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstring>

namespace {

/// The rows as Markdown, one heading per area.
void printTable()
{
    const char *area = "";
    for (const auto &row : talmo::test::faultTable()) {
        if (std::strcmp(area, row.area) != 0) {
            area = row.area;
            std::printf("\n### %s\n\n| What goes wrong | What you see |\n|---|---|\n", area);
        }
        std::printf("| %s | %s |\n", row.fault, row.seen);
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--table") == 0) {
        printTable();
        return 0;
    }
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
