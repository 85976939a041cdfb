#include "shell/cursor_and_window_state.h"
#include "shell/Splash.h"

#include <gtest/gtest.h>
#include <QElapsedTimer>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace blockhouse {
namespace {

// Shows the window and returns when its pause has run out; `during` runs in the middle of the pause.
template <typename During>
void runThePause(Splash& splash, During during) {
    splash.show();
    QTimer::singleShot(50, during);
    auto* start = splash.findChild<QTimer*>(QStringLiteral("Timer1"));
    ASSERT_TRUE(start && start->interval() == 1);
    bool over = false;
    QObject::connect(start, &QTimer::timeout, QCoreApplication::instance(), [&over] { over = true; });
    ASSERT_TRUE(QTest::qWaitFor([&over] { return over; }, 20'000));
}

TEST(Splash, AsksForTheMainWindowWhenThePauseIsOver) {
    Splash splash;
    const QSignalSpy wanted(&splash, &Splash::mainWindowWanted);
    QElapsedTimer clock;
    clock.start();
    runThePause(splash, [&] {
        EXPECT_TRUE(splash.isVisible() && wanted.isEmpty());
        EXPECT_EQ(splash.size(), QSize(328, 299));
        EXPECT_EQ(splash.geometry().center(), splash.screen()->geometry().center());
        EXPECT_EQ(splash.grab().toImage().pixelColor(5, 5).alpha(), 255);
        EXPECT_NE(splash.grab().toImage().pixel(5, 5), splash.grab().toImage().pixel(164, 290)) << "a picture";
    });
    EXPECT_GE(clock.elapsed(), 2000);
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_FALSE(splash.isVisible());
}

TEST(Splash, NothingHappensWhileItIsBeingShown) {
    Splash splash;
    bool happened = false;
    QMetaObject::invokeMethod(
        &splash, [&happened] { happened = true; }, Qt::QueuedConnection);
    splash.show();
    EXPECT_FALSE(happened) << "a click could delete the window that is being shown";
}

TEST(Splash, AClickDuringThePauseCountsOnce) {
    auto splash = std::make_unique<Splash>();
    const QSignalSpy wanted(splash.get(), &Splash::mainWindowWanted);
    runThePause(*splash, [&] {
        QTest::mouseClick(splash.get(), Qt::LeftButton);
        EXPECT_EQ(wanted.count(), 1);
        EXPECT_FALSE(splash->isVisible());
    });
    EXPECT_EQ(wanted.count(), 1);
}

TEST(Splash, ClosedInAnyOtherWayItLeadsToTheMainWindowToo) {
    Splash splash;
    const QSignalSpy wanted(&splash, &Splash::mainWindowWanted);
    splash.show();
    splash.close();
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_FALSE(splash.isVisible());
}

TEST(Splash, MayBeDeletedDuringThePause) {
    QPointer<Splash> splash = new Splash;
    bool paused = true;
    QObject::connect(splash, &Splash::mainWindowWanted, [&paused] { paused = false; });
    splash->show();
    QTimer::singleShot(50, splash, [&splash] { delete splash; });
    ASSERT_TRUE(QTest::qWaitFor([&splash] { return splash.isNull(); }, 20'000));
    EXPECT_TRUE(paused);
}

TEST(Pause, ServesEventsAndDoesNotEndEarly) {
    QElapsedTimer clock;
    clock.start();
    bool served = false;
    QTimer::singleShot(1, [&served] { served = true; });
    Pause(0.1);
    EXPECT_GE(clock.elapsed(), 100);
    EXPECT_TRUE(served);
}

TEST(Pause, EndsWithTheProgramButNotForAnExitLongPast) {
    QElapsedTimer clock;
    clock.start();
    QTimer::singleShot(1, [] { QCoreApplication::exit(); });
    Pause(30);
    EXPECT_LT(clock.elapsed(), 30'000);
    clock.restart(); // the exit is still on record, since no event loop took it
    Pause(0.05);
    EXPECT_GE(clock.elapsed(), 50);
    QTimer::singleShot(0, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

TEST(WinState, TellsMinimisedMaximisedAndNeither) {
    QWidget window;
    const WindowHandle handle = handleOf(&window);
    window.showNormal();
    EXPECT_EQ(WinState(handle), 2);
    window.showMaximized();
    EXPECT_EQ(WinState(handle), 3);
    window.showMinimized();
    EXPECT_EQ(WinState(handle), 1);
}

} // namespace
} // namespace blockhouse
