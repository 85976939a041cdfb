#pragma once

namespace blockhouse {

// Serves the event queue if about 8 ms have passed since it was last served from here, so calling it in a tight
// loop costs next to nothing. Any window may be gone when it returns: callers check theirs.
void yield();

// While one of these lives, events are served at every call: tests do something in the middle of work with it.
class EagerYield {
public:
    EagerYield();
    ~EagerYield();
    EagerYield(const EagerYield&) = delete;
    EagerYield& operator=(const EagerYield&) = delete;
};

} // namespace blockhouse
