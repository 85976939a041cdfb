#include "platform/widgets/LongWork.h"

#include "platform/widgets/window_lock.h"
#include "platform/widgets/yield.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QPointer>
#include <QScopeGuard>
#include <QWidget>

#include <optional>
#include <utility>

namespace blockhouse {
namespace {

// The widget whose closing closes this one: the frame around its child window, or its top-level window.
QWidget* closingAncestor(QWidget& widget) {
    QWidget* window = &widget;
    while (!window->isWindow() && !qobject_cast<QMdiSubWindow*>(window))
        window = window->parentWidget();
    return window;
}

// Keeps the window of a widget from being deleted when it is closed, and notes that it was. Holds of one window may be
// nested.
class HeldWindow : public QObject {
public:
    explicit HeldWindow(QWidget& widget, std::function<void()> whenClosed = {})
        : held_(closingAncestor(widget)), around_(held_->window()),
          deletes_(held_->testAttribute(Qt::WA_DeleteOnClose)), whenClosed_(std::move(whenClosed)) {
        held_->setAttribute(Qt::WA_DeleteOnClose, false);
        held_->installEventFilter(this);
        connect(&widget, &QObject::destroyed, this, &HeldWindow::noteClosed);
        if (around_ != held_)
            around_->installEventFilter(this);
    }

    // Closed meanwhile, the window is deleted when control is back in the event loop.
    ~HeldWindow() override {
        if (!held_ || !deletes_)
            return;
        held_->setAttribute(Qt::WA_DeleteOnClose);
        if (held_->isHidden() && closed_)
            held_->deleteLater();
    }

    HeldWindow(const HeldWindow&) = delete;
    HeldWindow& operator=(const HeldWindow&) = delete;

    [[nodiscard]] bool isOpen() const { return held_ && !closed_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Close)
            noteClosed();
        return QObject::eventFilter(watched, event);
    }

private:
    void noteClosed() {
        closed_ = true;
        if (whenClosed_)
            whenClosed_();
    }

    const QPointer<QWidget> held_;
    const QPointer<QWidget> around_; // the main window around a child window
    const bool deletes_;
    bool closed_ = false;
    const std::function<void()> whenClosed_;
};

} // namespace

struct LongWork::State {
    struct Work {
        Steps steps;
        Pointer pointer;
    };

    std::optional<Work> wanted; // waiting to start
    bool isRunning = false;
    bool isAbandoned = false; // the work now running
};

LongWork::LongWork(QWidget& owner) : owner_(owner), state_(std::make_shared<State>()) {}

LongWork::~LongWork() {
    abandon();
}

LongWork::Outcome LongWork::run(Steps steps, Pointer pointer) {
    const std::shared_ptr<State> state = state_;
    state->wanted = State::Work{std::move(steps), pointer};
    state->isAbandoned = true;
    if (state->isRunning)
        return Outcome::HandedOver;
    state->isRunning = true;
    const QScopeGuard ended([state] { state->isRunning = false; });
    Outcome outcome = Outcome::Abandoned;
    const auto giveUp = [state] {
        state->wanted.reset();
        state->isAbandoned = true;
    };
    const HeldWindow held(owner_, giveUp);
    while (state->wanted && held.isOpen()) {
        const State::Work work = *std::exchange(state->wanted, std::nullopt);
        state->isAbandoned = false;
        outcome = runSteps(work.steps, work.pointer, *state);
    }
    return held.isOpen() ? outcome : Outcome::Abandoned;
}

LongWork::Outcome LongWork::runSteps(const Steps& steps, Pointer pointer, const State& state) {
    std::optional<Hourglass> hourglass;
    if (pointer == Pointer::Hourglass)
        hourglass.emplace();
    for (const Step& step : steps) {
        Then then = Then::Again;
        while (then == Then::Again) {
            then = step();
            if (then != Then::End)
                yield();
            if (state.isAbandoned)
                return Outcome::Abandoned;
        }
        if (then == Then::End)
            break;
    }
    return Outcome::Finished;
}

void LongWork::abandon() {
    state_->wanted.reset();
    state_->isAbandoned = true;
}

bool LongWork::isRunning() const {
    return state_->isRunning;
}

bool stillOpenAfter(QWidget& widget, const std::function<void()>& act) {
    const HeldWindow held(widget);
    act();
    return held.isOpen();
}

} // namespace blockhouse
