// Makes the system fail the code under test: link system_faults, and the calls that its libraries make go through here.
// Calls of the toolkit and of the test's own streams are not touched.
#pragma once

namespace blockhouse {

// While it lives, calls of that name fail: those after the first `spared` ones, as many as `times`. The one made last
// goes first.
class SystemFault {
public:
    static constexpr int always = 1'000'000;

    SystemFault(const char* call, int error, int spared = 0, int times = always);
    ~SystemFault();

    SystemFault(const SystemFault&) = delete;
    SystemFault& operator=(const SystemFault&) = delete;

    // Of the one made last.
    [[nodiscard]] static int failures();
};

// From here on this process gets killed at the n-th call (counted from 0) of any kind.
void dieAtCall(int n);

} // namespace blockhouse
