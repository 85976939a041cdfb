#include "findref/Form1.h"

#include <gtest/gtest.h>
#include <QScreen>
#include <QTest>

namespace blockhouse {
namespace {

TEST(Form1, CountsTheCharactersOfItsBox) {
    Form1 form;
    EXPECT_EQ(form.Label1->text(), QStringLiteral("length: 5"));
    form.RichTextBox1->setText("a\r\n\xE9");
    EXPECT_EQ(form.Label1->text(), QStringLiteral("length: 4"));
    QTest::keyClick(form.RichTextBox1, Qt::Key_X);
    EXPECT_EQ(form.Label1->text(), QStringLiteral("length: 5"));
    form.RichTextBox1->setText("");
    EXPECT_EQ(form.Label1->text(), QStringLiteral("length: 0"));
    form.show();
    QTest::keyClick(form.RichTextBox1, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

// Also run as on a very low screen.
TEST(Form1, StartsNoLargerThanItsScreen) {
    Form1 form;
    form.show();
    EXPECT_LT(form.height(), form.screen()->availableGeometry().height()) << "there is room for a title, too";
    EXPECT_LT(form.width(), form.screen()->availableGeometry().width());
    EXPECT_TRUE(form.rect().contains(form.RichTextBox1->geometry()));
}

} // namespace
} // namespace blockhouse
