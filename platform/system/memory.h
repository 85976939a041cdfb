// How the process gets its memory from the system.
#pragma once

namespace blockhouse {

// Keeps blocks of up to some megabytes in memory that the process has already, instead of asking the system for fresh
// pages for each one and giving them back. Blocks larger than that go back to the system as soon as they are freed.
// To be called once, early; a hint, which does nothing where the system's allocator has no such setting.
void reuseFreedMemory();

} // namespace blockhouse
