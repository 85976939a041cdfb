#include "platform/widgets/window_handles.h"

#include <gtest/gtest.h>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <memory>

namespace blockhouse {
namespace {

TEST(WindowHandles, OutliveNothingAndAreNotUsedTwice) {
    auto first = std::make_unique<QWidget>();
    const WindowHandle handle = handleOf(first.get());
    EXPECT_GE(handle, 1);
    EXPECT_EQ(handleOf(first.get()), handle);
    EXPECT_EQ(windowOf(handle), first.get());

    const QWidget* place = first.get();
    first.reset();
    EXPECT_FALSE(windowOf(handle));
    EXPECT_FALSE(isIconic(handle) || isZoomed(handle));
    ShowWindow(handle, ShowCommand::Maximise);
    for (int i = 0; i < 100; ++i) { // one of them is likely to stand where the first one stood
        const auto another = std::make_unique<QWidget>();
        EXPECT_NE(handleOf(another.get()), handle) << (another.get() == place ? "the same place" : "");
    }
}

TEST(WindowHandles, AChildWindowsStateIsThatOfItsFrame) {
    QMdiArea area;
    area.show();
    auto* window = new QWidget;
    QMdiSubWindow* frame = area.addSubWindow(window);
    frame->show();
    const WindowHandle handle = handleOf(window);
    EXPECT_FALSE(isIconic(handle) || isZoomed(handle));
    ShowWindow(handle, ShowCommand::Maximise);
    EXPECT_TRUE(frame->isMaximized() && isZoomed(handle) && !isIconic(handle));
    ShowWindow(handle, ShowCommand::Minimise);
    EXPECT_TRUE(frame->isMinimized() && isIconic(handle) && !isZoomed(handle));
}

} // namespace
} // namespace blockhouse
