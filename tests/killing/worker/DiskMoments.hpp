#pragma once

namespace pagora::test {

// The moments at which this process changes a file: the system's own calls for that are replaced in it, and counted.
// Any thread.

// From now on; at the moment of this number the process is killed, in the middle of what it was about to write. 0 never
// comes.
void countDiskMoments(long killAt);
// What follows is not counted, until counting goes on.
void pauseDiskMoments();
void resumeDiskMoments();

}
