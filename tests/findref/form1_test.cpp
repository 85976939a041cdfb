#include "findref/Form1.h"

#include <gtest/gtest.h>
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

} // namespace
} // namespace blockhouse
