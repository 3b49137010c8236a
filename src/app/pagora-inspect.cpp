#include "epub/InspectionServer.hpp"

#include <cstdlib>

// pagora-inspect: inspects books for Pagora, which starts it, with limits on time, memory and file access.
int main(int argc, char** argv)
{
    // _Exit, because nothing needs cleaning up and a confined process can do little.
    std::_Exit(pagora::serveInspections(argc, argv));
}
