#pragma once

namespace pagora {

// Returns the desktop's text scale factor. Main thread only.
double textScale();

}
