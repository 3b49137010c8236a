#include "pictures/PictureProcess.hpp"

#include <cstdlib>

// pagora-picture WIDTH HEIGHT: decodes one picture for Pagora, which starts it, with limits on time and memory.
int main(int argc, char** argv)
{
    // _Exit, because nothing needs cleaning up and a confined process can do little.
    std::_Exit(pagora::runPictureHelper(argc, argv));
}
