#include "pictures/PictureProcess.hpp"

// pagora-picture WIDTH HEIGHT: decodes one picture for Pagora, which starts it, within limits of time and memory.
int main(int argc, char** argv)
{
    return pagora::runPictureHelper(argc, argv);
}
