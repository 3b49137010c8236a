#pragma once

namespace pagora::test {

// Counts the file changes of this process by replacing the C library's functions for writing files. Thread-safe.

// Starts counting. The process is killed at the change with this number, in the middle of the write. 0 means never.
void countDiskMoments(long killAt);
// Pauses counting.
void pauseDiskMoments();
void resumeDiskMoments();

}
