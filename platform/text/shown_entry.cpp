#include "platform/text/shown_entry.h"

#include "platform/text/codepage.h"

namespace blockhouse {

std::string shownEntry(std::string_view entry) {
    const bool endsItsLine = entry.ends_with(endOfItsLine);
    if (endsItsLine)
        entry.remove_suffix(endOfItsLine.size());
    return codepage::toUtf8(entry) + (endsItsLine ? " \u21B5" : "");
}

} // namespace blockhouse
