#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/pictures.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace blockhouse {
namespace {

const auto saved = QStringLiteral("saved");
const auto disk = QStringLiteral("disk");

struct Notices : testing::Test {
    QWidget window;
    QPlainTextEdit text{&window};
    NoticeArea notices{text};
    QSignalSpy heights{&notices, &NoticeArea::heightChanged};

    Notices() {
        window.resize(400, 300);
        text.setGeometry(10, 20, 380, 200);
        text.setLineWrapMode(QPlainTextEdit::NoWrap);
        window.show();
        QApplication::setActiveWindow(&window);
        text.setFocus();
    }

    [[nodiscard]] int lastHeight() const { return heights.isEmpty() ? 0 : heights.last().first().toInt(); }
};

TEST_F(Notices, OneLineForEachTopicUntilWithdrawn) {
    EXPECT_FALSE(notices.isVisible());
    notices.tell(saved, QStringLiteral("first"));
    const int one = lastHeight();
    notices.tell(saved, QStringLiteral("second"), QStringLiteral("/a/b"));
    EXPECT_EQ(lastHeight(), one);
    EXPECT_EQ(notices.textOf(saved), QStringLiteral("second"));
    EXPECT_EQ(notices.findChild<QLabel*>(saved)->toolTip(), QStringLiteral("/a/b"));
    notices.tell(disk, QStringLiteral("<b>third</b>"));
    EXPECT_GT(lastHeight(), one);
    notices.withdraw(saved);
    EXPECT_EQ(notices.textOf(saved), QString());
    EXPECT_EQ(lastHeight(), one);
    notices.withdraw(disk);
    EXPECT_FALSE(notices.isVisible());
    EXPECT_EQ(lastHeight(), 0);
}

TEST_F(Notices, LieOverTheFootAboveTheScrollBar) {
    text.setPlainText(QString(500, QLatin1Char('x')));
    notices.tell(saved, QStringLiteral("told"));
    QCoreApplication::processEvents();
    ASSERT_TRUE(text.horizontalScrollBar()->isVisible());
    EXPECT_EQ(notices.geometry().bottom(), text.geometry().bottom() - text.horizontalScrollBar()->height());
    EXPECT_EQ(notices.width(), text.width());
    text.resize(200, 150);
    EXPECT_EQ(notices.width(), 200);
    EXPECT_EQ(notices.geometry().bottom(), text.geometry().bottom() - text.horizontalScrollBar()->height());
    const int low = notices.height();
    notices.tell(saved, QStringLiteral("a text that does not fit into one line of a window as narrow as this one is"));
    EXPECT_GT(notices.height(), low);
}

TEST_F(Notices, AreDismissedByEscapeAndByTheirButtonAndTakeNoKeyboard) {
    notices.tell(saved, QStringLiteral("told"));
    QTest::keyClicks(&text, QStringLiteral("typed"));
    EXPECT_EQ(text.toPlainText(), QStringLiteral("typed"));
    EXPECT_EQ(notices.textOf(saved), QStringLiteral("told"));
    QTest::keyClick(&text, Qt::Key_Escape);
    EXPECT_FALSE(notices.isVisible());

    notices.tell(saved, QStringLiteral("told"));
    notices.tell(disk, QStringLiteral("told"));
    auto* close = notices.findChild<QWidget*>(QStringLiteral("closeNotices"));
    QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_FALSE(notices.isVisible());
    EXPECT_TRUE(text.hasFocus());
    EXPECT_EQ(lastHeight(), 0);
}

TEST_F(Notices, ABriefOneEndsByItselfUnlessItIsToldAnew) {
    notices.tell(saved, QStringLiteral("brief"), {}, std::chrono::milliseconds(1));
    ASSERT_TRUE(heights.wait() || lastHeight() == 0);
    EXPECT_FALSE(notices.isVisible());
    notices.tell(saved, QStringLiteral("brief"), {}, std::chrono::milliseconds(1));
    notices.tell(saved, QStringLiteral("lasting"));
    EXPECT_FALSE(notices.findChild<QTimer*>()->isActive());
    EXPECT_TRUE(notices.isVisible());
}

TEST(WithDot, DrawsItInTheLowerRightCornerOnly) {
    QPixmap plain(16, 16);
    plain.fill(Qt::black);
    const QImage dotted = withDot(QIcon(plain)).pixmap(QSize(16, 16), 1.0).toImage();
    EXPECT_GT(qRed(dotted.pixel(11, 11)), 128);
    EXPECT_EQ(dotted.pixel(3, 3), qRgb(0, 0, 0));
    EXPECT_FALSE(withDot(QIcon()).isNull());
}

} // namespace
} // namespace blockhouse
