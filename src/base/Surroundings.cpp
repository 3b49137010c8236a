#include "base/Surroundings.hpp"

#include <unistd.h>

namespace pagora {

Surroundings surroundings()
{
    return access("/.flatpak-info", F_OK) == 0 ? Surroundings::Flatpak : Surroundings::Desktop;
}

}
