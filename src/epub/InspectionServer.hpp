#pragma once

namespace pagora {

// The main function of pagora-inspect: answers questions from standard input until it is closed. The arguments are the
// memory limit in bytes, the scratch folder, the folder for spare files and the folder of unpacked books; no folders
// for a process that only scales covers. The process is confined before the first question. Returns the exit status.
int serveInspections(int count, char** arguments);

}
