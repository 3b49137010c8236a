#pragma once

#include <cstdint>

namespace pagora {

// State shared by all reader windows, so that a request survives the load that carries it out. Main thread only.
struct ReaderState {
    // The next finished load shows the position `readAmount` of the chapter.
    bool restorePositionPending = false;
    // The next finished load, if it has no anchor or slider fraction, opens the chapter on its last page.
    bool openAtChapterEnd = false;
    // Fraction of the chapter that was chosen on the location slider; 0 for none.
    float pendingChapterFraction = 0;
    // The last slider value that one of the readers has applied.
    float lastSliderValue = 0;
};

}
