#include "platform/widgets/window_lock.h"

#include <gtest/gtest.h>
#include <QCursor>
#include <QGuiApplication>

#include <memory>

namespace blockhouse {
namespace {

TEST(WindowUpdateLock, OneWindowOfTheProgramAtATime) {
    QWidget window;
    QWidget another;
    {
        const WindowUpdateLock none(nullptr);
        const WindowUpdateLock first(&window);
        EXPECT_TRUE(first.isHeld() && !window.updatesEnabled());
        {
            const WindowUpdateLock again(&window);
            const WindowUpdateLock second(&another);
            EXPECT_FALSE(none.isHeld() || again.isHeld() || second.isHeld());
        }
        EXPECT_FALSE(window.updatesEnabled()) << "not theirs to release";
        EXPECT_TRUE(another.updatesEnabled());
    }
    EXPECT_TRUE(window.updatesEnabled());
    EXPECT_TRUE(WindowUpdateLock(&another).isHeld());
}

TEST(WindowUpdateLock, IsReleasedWhenItsWindowIsGone) {
    QWidget another;
    {
        auto window = std::make_unique<QWidget>();
        const WindowUpdateLock lock(window.get());
        window.reset();
        EXPECT_FALSE(WindowUpdateLock(&another).isHeld());
    }
    EXPECT_TRUE(WindowUpdateLock(&another).isHeld());
}

TEST(Hourglass, ShowsUntilTheOutermostEnds) {
    {
        const Hourglass outer;
        { const Hourglass inner; }
        ASSERT_TRUE(QGuiApplication::overrideCursor());
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

} // namespace
} // namespace blockhouse
