#include "platform/widgets/LongWork.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <string>

namespace blockhouse {
namespace {

using Then = LongWork::Then;
using Outcome = LongWork::Outcome;

class Owner : public QWidget {
public:
    LongWork work{*this};
};

class LongWorkOfAWindow : public testing::Test {
protected:
    void SetUp() override {
        owner_->setAttribute(Qt::WA_DeleteOnClose);
        owner_->show();
    }

    void TearDown() override { delete owner_; }

    // Writes its letter; `act` is done in the middle of it.
    LongWork::Step step(char letter, Then then = Then::NextStep, std::function<void()> act = {}) {
        return [this, letter, then, act] {
            done_ += letter;
            if (act)
                act();
            return then;
        };
    }

    // Deletes what was closed, as the event loop does.
    static void returnToTheEventLoop() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    QPointer<Owner> owner_ = new Owner;
    std::string done_;
};

TEST_F(LongWorkOfAWindow, RunsItsStepsInOrder) {
    int again = 3;
    EXPECT_EQ(owner_->work.run({step('a'),
                                [&] {
                                    done_ += 'b';
                                    EXPECT_TRUE(owner_->work.isRunning());
                                    return --again > 0 ? Then::Again : Then::NextStep;
                                },
                                step('c', Then::End), step('d')}),
              Outcome::Finished);
    EXPECT_EQ(done_, "abbbc");
    EXPECT_FALSE(owner_->work.isRunning());
    EXPECT_EQ(owner_->work.run({}), Outcome::Finished);
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    owner_->work.run({[] {
                         EXPECT_TRUE(QGuiApplication::overrideCursor());
                         return Then::End;
                     }},
                     LongWork::Pointer::Hourglass);
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

TEST_F(LongWorkOfAWindow, ServesEventsBetweenTheSteps) {
    bool served = false;
    QTimer::singleShot(0, [&served] { served = true; });
    // As often as it takes: events are served when about 8 ms have passed.
    EXPECT_EQ(owner_->work.run({[&served] { return served ? Then::NextStep : Then::Again; }}), Outcome::Finished);
}

TEST_F(LongWorkOfAWindow, EndsWithTheWindowAndKeepsItUntilThen) {
    const struct {
        const char* name;
        std::function<void(QWidget&)> act;
        bool isKept;
    } ends[] = {
        {"closed", [](QWidget& owner) { owner.close(); }, true},
        {"deleted", [](QWidget& owner) { delete &owner; }, false},
        {"abandoned", [](QWidget& owner) { static_cast<Owner&>(owner).work.abandon(); }, true},
    };

    for (const auto& end : ends) {
        SCOPED_TRACE(end.name);
        for (const Then then : {Then::Again, Then::NextStep, Then::End}) {
            delete owner_;
            owner_ = new Owner;
            owner_->setAttribute(Qt::WA_DeleteOnClose);
            owner_->show();
            done_.clear();
            EXPECT_EQ(owner_->work.run({step('a', then, [&] { end.act(*owner_); }), step('b')}), Outcome::Abandoned);
            EXPECT_EQ(done_, "a");
            EXPECT_EQ(!owner_.isNull(), end.isKept);
            const bool wasClosed = owner_ && owner_->isHidden();
            returnToTheEventLoop();
            EXPECT_EQ(owner_.isNull(), wasClosed || !end.isKept);
        }
    }
}

TEST_F(LongWorkOfAWindow, EndsWithTheWindowAroundItAndWithItsFrame) {
    for (const bool closesFrame : {false, true}) {
        QMdiArea area;
        area.show();
        auto* child = new Owner;
        const QPointer<QMdiSubWindow> frame = area.addSubWindow(child);
        frame->show();
        const Outcome outcome = child->work.run(
            {step('a', Then::NextStep, [&] { closesFrame ? frame->close() : area.close(); }), step('b')});
        EXPECT_EQ(outcome, Outcome::Abandoned);
        EXPECT_TRUE(frame) << "the toolkit may still be at work with it";
        returnToTheEventLoop();
        EXPECT_EQ(frame.isNull(), closesFrame);
    }
    EXPECT_EQ(done_, "aa");
}

// However often the work is begun anew, nothing piles up on the stack: the call that runs goes on with the newest.
TEST_F(LongWorkOfAWindow, GoesOnWithNewerWorkInPlaceOfTheOld) {
    int begun = 0;
    int depth = 0;
    int deepest = 0;
    std::function<Outcome()> begin = [&] {
        ++begun;
        return owner_->work.run({[&] {
                                     deepest = std::max(deepest, ++depth);
                                     if (begun < 1000) {
                                         EXPECT_EQ(begin(), Outcome::HandedOver);
                                     }
                                     --depth;
                                     return Then::NextStep;
                                 },
                                 step('z')});
    };
    EXPECT_EQ(begin(), Outcome::Finished);
    EXPECT_EQ(begun, 1000);
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(done_, "z") << "the newest alone comes to its end";

    done_.clear();
    const auto closing = [&] {
        owner_->work.run({step('n')});
        owner_->close();
    };
    EXPECT_EQ(owner_->work.run({step('a', Then::NextStep, closing)}), Outcome::Abandoned);
    EXPECT_EQ(done_, "a") << "closed, it begins nothing that was asked for before";
    done_.clear();
    delete owner_;
    owner_ = new Owner;
    owner_->show();
    const auto closed = [&] {
        owner_->close();
        owner_->work.run({step('n')});
    };
    EXPECT_EQ(owner_->work.run({step('a', Then::NextStep, closed)}), Outcome::Abandoned);
    EXPECT_EQ(done_, "a") << "nor afterwards";
}

TEST_F(LongWorkOfAWindow, AControlOutlivesItsOwnClick) {
    auto* button = new QPushButton(owner_);
    button->show();
    bool stillOpen = true;
    QPointer<QPushButton> guarded = button;
    QObject::connect(button, &QPushButton::clicked, [&] {
        stillOpen = stillOpenAfter(*owner_, [this] {
            EXPECT_TRUE(stillOpenAfter(*owner_, [] {})) << "one within another";
            owner_->close();
            QCoreApplication::processEvents();
            EXPECT_TRUE(owner_);
        });
        EXPECT_TRUE(guarded) << "the toolkit goes on with it";
    });
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(stillOpen);
    returnToTheEventLoop();
    EXPECT_FALSE(owner_);
}

} // namespace
} // namespace blockhouse
