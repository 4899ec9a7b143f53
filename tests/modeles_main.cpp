/// Starts the tests of models and files.
#include <gtest/gtest.h>

#include "tests/locale.h"

int main(int argc, char** argv) {
    prend_la_locale();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
