#pragma once

namespace pagora {

// The desktop's text scale factor. Main thread.
double textScale();

}
