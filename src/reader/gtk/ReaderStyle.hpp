#pragma once

namespace pagora {

// Gives the display the style of the reader windows, once. The contents pane counts on its rows being as high as its
// links, which this style sees to within the class "contents-pane".
void loadReaderStyle();

}
