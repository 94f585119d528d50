#pragma once

// By default the C library hands every large block a program frees straight
// back to the system, and the next block of that size arrives as untouched
// memory whose every page faults on first write. The console's document
// copies all its text into such a block each time it compacts or grows its
// buffer, and on a virtual machine the faults cost many times the copy
// (some 10 ms for 2 MB of text, a visible freeze). Keeping freed memory for
// reuse makes those copies cheap from the second on; what is kept is bounded
// by the most the program ever held at once. Call once, at start.
void keepFreedMemoryForReuse();
