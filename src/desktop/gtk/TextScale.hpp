#pragma once

namespace pagora {

// How much larger than usual the desktop wants text, and what goes with it. Main thread.
double textScale();

}
