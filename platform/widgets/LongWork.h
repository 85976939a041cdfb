// The only place where long work serves events. Work that takes longer than a user should wait is cut into steps, and
// events are served between them. While they are served, the window that works may be closed, the program may end, and
// the same work may be started again. All of that is handled here, so that a step needs no guard: it starts only while
// its window is open, and its window is not deleted before the work has ended.
#pragma once

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace blockhouse {

class LongWork {
public:
    enum class Then {
        Again,    // this step once more: it has done a piece of its own
        NextStep, // the work is finished after the last one
        End,      // the work is finished
    };

    // A step should take a few milliseconds. It may serve events itself (a progress bar, a message box), preferably as
    // its last act.
    using Step = std::function<Then()>;
    using Steps = std::vector<Step>;

    enum class Outcome {
        Finished,
        Abandoned,  // before the end: the window or the one around it was closed, or abandon() was called
        HandedOver, // other work of the owner was under way: the call that runs that goes on with this work instead
    };

    enum class Pointer { Unchanged, Hourglass };

    // The owner holds its LongWork as a member, one for each kind of work.
    explicit LongWork(QWidget& owner);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    // Runs the steps in order. The owner may be closed when this returns, but it is not deleted before control is back
    // in the event loop. Work that is under way is abandoned for the new one, which then runs in its place and not
    // inside it, however often that happens.
    Outcome run(Steps steps, Pointer pointer = Pointer::Unchanged);

    // What is under way ends after the present step. Does nothing when nothing is.
    void abandon();

    [[nodiscard]] bool isRunning() const;

private:
    struct State;

    static Outcome runSteps(const Steps& steps, Pointer pointer, const State& state);

    QWidget& owner_;
    const std::shared_ptr<State> state_; // outlives the owner as long as run() is on the stack
};

// Runs something that serves events on behalf of a window or of a control in it: a dialog, a pause, a request that
// another window works on. The window is not deleted meanwhile, so that the control that asked for it is still there.
// False when the window, or the one around it, was closed: then there is nothing left to do for it.
[[nodiscard]] bool stillOpenAfter(QWidget& widget, const std::function<void()>& act);

} // namespace blockhouse
