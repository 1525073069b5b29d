#pragma once

// From now on the n-th read, or write, at an offset of a file fails, counted from 1; 0 means none.
// The test program is linked so that all of its pread64 and pwrite64 pass here.
void failReadAt(int n);
void failWriteAt(int n);
// Whether it came so far.
bool transferFailed();
