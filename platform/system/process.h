// How the process lives with its system.
#pragma once

namespace blockhouse {

// To be called once, early. Hints, which do nothing where the system has no such setting:
//
//   memory    blocks of up to some megabytes are kept and used again, instead of asking the system for fresh pages for
//             each one and giving them back; larger blocks go back as soon as they are freed
//   errors    of drives are told by the program alone, in no box of the system's own that waits for an answer
void configureProcess();

} // namespace blockhouse
