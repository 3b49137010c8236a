#include "epub/InspectionServer.hpp"

#include <cstdlib>

// pagora-inspect: inspects books for Pagora, which starts it, within limits of time, memory and reach.
int main(int argc, char** argv)
{
    // Nothing is left to do at its end, and a confined process can do little.
    std::_Exit(pagora::serveInspections(argc, argv));
}
