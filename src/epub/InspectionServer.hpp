#pragma once

namespace pagora {

// The main function of pagora-inspect: answers requests from standard input until it is closed. The arguments are the
// memory limit in bytes, the scratch folder, the folder for spare files and the folder of unpacked books. A process
// that only scales covers gets no folders. The process is confined before the first request. Returns the exit status.
int serveInspections(int count, char** arguments);

}
