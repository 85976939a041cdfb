#include "platform/widgets/message_box.h"
#include "tests/support/MessageBoxReader.h"

#include <gtest/gtest.h>
#include <QTest>

namespace blockhouse {
namespace {

TEST(MessageBox, OnlyTheYesButtonMeansYes) {
    MessageBoxReader boxes;
    EXPECT_TRUE(askYesNo(nullptr, QStringLiteral("first")));
    boxes.onBox = [] { QApplication::activeModalWidget()->close(); };
    EXPECT_FALSE(askYesNo(nullptr, QStringLiteral("<b>second</b>")));
    boxes.onBox = [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); };
    EXPECT_FALSE(askYesNo(nullptr, QStringLiteral("third")));
    EXPECT_EQ(boxes.messages().join(QLatin1Char(' ')),
              QStringLiteral("Blockhouse|first Blockhouse|<b>second</b> Blockhouse|third"));
}

TEST(MessageBox, AFileErrorNamesTheFileAndTheCause) {
    MessageBoxReader boxes;
    tellFileError(nullptr, QStringLiteral("could not be opened."), {"/caf\xC3\xA9/%2", "No such file"});
    EXPECT_EQ(boxes.messages().join(QString()),
              QStringLiteral("Blockhouse|/caf\u00E9/%2\ncould not be opened.\nNo such file"));
}

TEST(MessageBox, GoesWithItsParent) {
    auto* parent = new QWidget;
    MessageBoxReader boxes;
    boxes.onBox = [parent] { delete parent; };
    EXPECT_FALSE(askYesNo(parent, QStringLiteral("text")));
    EXPECT_EQ(boxes.messages().size(), 1);
}

} // namespace
} // namespace blockhouse
