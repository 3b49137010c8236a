#include "running/ExitDeadline.hpp"

#include "tests/support/ForkedTest.hpp"

#include <unistd.h>

namespace pagora {

TEST(ExitDeadline, ProcessThatWaitsForEverEnds)
{
    test::inForkedProcess([] {
        endProcessWithin(std::chrono::milliseconds(10));
        for (;;)
            ::pause();
    });
}

}
