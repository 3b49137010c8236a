#pragma once

namespace pagora::bench {

// The processor time that all page processes of this program have used, in milliseconds.
double pageProcessorTime();

}
