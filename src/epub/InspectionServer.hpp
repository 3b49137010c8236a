#pragma once

namespace pagora {

// All that pagora-inspect does: answers the program's questions, which come on the standard input, until that ends. The
// arguments are the bytes of memory that it may get, the scratch folder, the folder for spare files and the folder of
// unpacked books; no folders for a process that only scales covers. The process is confined before the first question.
// Returns the program's status.
int serveInspections(int count, char** arguments);

}
