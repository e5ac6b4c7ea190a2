#include "tests/support/TestMain.h"

int main(int argc, char **argv)
{
    return test::runAll(argc, argv);
}
