#include "platform/system/process.h"

#include "platform/system/windows/windows_file.h"

namespace blockhouse {

void configureProcess() {
    ::SetErrorMode(::GetErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

} // namespace blockhouse
