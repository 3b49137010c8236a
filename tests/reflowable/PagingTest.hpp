#pragma once

#include "tests/reflowable/ReaderTest.hpp"

namespace pagora::test {

// Page turns and seeks.
class Paging : public ReaderTest {
protected:
    static constexpr int back = 0;
    static constexpr int on = 1;

    // Seeks to this fraction of the second of three chapters.
    void seekTo(double fraction)
    {
        open(3, 1);
        state.pendingChapterFraction = static_cast<float>(fraction);
        page().finishSubresource();
    }
};

}
