#include "platform/widgets/message_box.h"
#include "tests/support/MessageBoxReader.h"

#include <gtest/gtest.h>
#include <QFileDialog>
#include <QPointer>
#include <QTest>

namespace blockhouse {
namespace {

TEST(MessageBox, OnlyTheYesButtonMeansYes) {
    QWidget window;
    MessageBoxReader boxes;
    EXPECT_EQ(askYesNo(window, QStringLiteral("first")), true);
    boxes.onBox = [] { QApplication::activeModalWidget()->close(); };
    EXPECT_EQ(askYesNo(window, QStringLiteral("<b>second</b>")), false);
    boxes.onBox = [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); };
    EXPECT_EQ(askYesNo(window, QStringLiteral("third")), false);
    EXPECT_EQ(boxes.messages().join(QLatin1Char(' ')),
              QStringLiteral("Blockhouse|first Blockhouse|<b>second</b> Blockhouse|third"));
}

TEST(MessageBox, AFileErrorNamesTheFileAndTheCause) {
    MessageBoxReader boxes;
    tellFileError(nullptr, QStringLiteral("could not be opened."), {"/caf\xC3\xA9/%2", "No such file"});
    EXPECT_EQ(boxes.messages().join(QString()),
              QStringLiteral("Blockhouse|/caf\u00E9/%2\ncould not be opened.\nNo such file"));
}

TEST(MessageBox, NobodyAnswersForAWindowThatHasGone) {
    QPointer<QWidget> window = new QWidget;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    MessageBoxReader boxes;
    boxes.onBox = [&window] {
        window->close();
        EXPECT_TRUE(window) << "not before the box is through";
        static_cast<QDialog*>(QApplication::activeModalWidget())->accept();
    };
    EXPECT_EQ(askYesNo(*window, QStringLiteral("closed")), std::nullopt);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);

    window = new QWidget;
    boxes.onBox = [&window] { delete window; };
    EXPECT_EQ(askYesNo(*window, QStringLiteral("deleted")), std::nullopt);
    EXPECT_EQ(boxes.messages().size(), 2);
}

// A dialog lies above its parent, so it has to belong to the window that is kept above all others.
TEST(MessageBox, DialogsBelongToTheWindowThatIsOnTop) {
    QWidget window;
    window.show();
    QWidget onTop(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint);
    const QWidget* parent = nullptr;
    MessageBoxReader boxes;
    boxes.onBox = [&parent] {
        parent = QApplication::activeModalWidget()->parentWidget();
        QApplication::activeModalWidget()->close();
    };
    tell(&window, QStringLiteral("text"));
    EXPECT_EQ(parent, &window);
    onTop.show();
    tell(&window, QStringLiteral("text"));
    EXPECT_EQ(parent, &onTop);
    EXPECT_EQ(askYesNo(window, QStringLiteral("text")), false);
    EXPECT_EQ(parent, &onTop);
    QTimer::singleShot(0, [&parent] {
        parent = QApplication::activeModalWidget()->parentWidget();
        QApplication::activeModalWidget()->close();
    });
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    EXPECT_EQ(askForFileToOpen(window, QStringLiteral("Open"), {}), std::nullopt);
    EXPECT_EQ(parent, &onTop);
    onTop.hide();
    tell(nullptr, QStringLiteral("text"));
    EXPECT_EQ(parent, nullptr);
}

} // namespace
} // namespace blockhouse
