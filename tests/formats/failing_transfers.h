#pragma once

// From now on the n-th transfer of a kind fails, counted from 1; 0 means none. The test program is
// linked so that all of its calls of these functions pass here.
void failReadAt(int n);         // pread64
void failWriteAt(int n);        // pwrite64
void failStreamReadAt(int n);   // fread
void failStreamWriteAt(int n);  // fwrite
// Whether it came so far.
bool transferFailed();
// How many of that kind there were since the last fail...At.
int streamReads();
int streamWrites();
