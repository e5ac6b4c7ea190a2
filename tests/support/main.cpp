// Linked into every test program that has no main() of its own.
#include "tests/support/TestMain.h"

int main(int argc, char **argv)
{
    return test::runAll(argc, argv);
}
