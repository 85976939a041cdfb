// The two lists that the whole program works on. `Dirs` holds the full paths of the user's directories, in the user's
// order; it belongs to whoever puts the program together and is handed by reference to the windows that need it.
// `jumps` holds the setting names that the editors jump to; it belongs to the main window.
#pragma once

#include "platform/text/EntryList.h"

namespace blockhouse {

inline void ClearDirs(EntryList& Dirs) {
    Dirs.clear();
}

inline void ClearJumps(EntryList& jumps) {
    jumps.clear();
}

} // namespace blockhouse
