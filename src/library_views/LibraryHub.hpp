#pragma once

namespace pagora {

// What the library views need from the hub.
class LibraryHub {
public:
    virtual ~LibraryHub() = default;
    // Opens the first selected book of the view that is shown.
    virtual void sendDoubleClick() = 0;
};

}
