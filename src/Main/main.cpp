#include "Main/RunTalmo.h"

int main(int argc, char **argv)
{
    return talmo::runTalmo(argc, argv);
}
