#pragma once

#include <cstdint>

namespace pagora {

// State shared by all reader windows, so that an intent survives the load that carries it out. Main thread only.
struct ReaderState {
    // The next finished load places the reader at `readAmount` of the chapter.
    bool restorePositionPending = false;
    // The next finished load, without anchor or slider fraction, opens the chapter on its last page.
    bool openAtChapterEnd = false;
    // Fraction within the chapter picked on the location slider; 0 for none.
    float pendingChapterFraction = 0;
    // The slider value last acted upon, by either reader.
    float lastSliderValue = 0;
};

}
