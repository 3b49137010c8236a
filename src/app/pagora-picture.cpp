#include "pictures/PictureProcess.hpp"

#include <cstdlib>

// pagora-picture WIDTH HEIGHT: decodes one picture for Pagora, which starts it, within limits of time and memory.
int main(int argc, char** argv)
{
    // Nothing is left to do at its end, and a confined process can do little.
    std::_Exit(pagora::runPictureHelper(argc, argv));
}
