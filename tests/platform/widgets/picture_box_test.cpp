#include "platform/text/Colour.h"
#include "platform/widgets/PictureBox.h"

#include <gtest/gtest.h>
#include <QImage>

namespace blockhouse {
namespace {

constexpr Colour red = rgb(255, 0, 0);

class PictureBoxTest : public testing::Test {
protected:
    void SetUp() override { box_.resize(40, 20); }

    [[nodiscard]] QRect redPart() {
        const QImage image = box_.grab().toImage();
        QRect part;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) == qRgb(255, 0, 0))
                    part |= QRect(x, y, 1, 1);
            }
        }
        return part;
    }

    PictureBox box_;
};

TEST_F(PictureBoxTest, LinesAreFilledRectanglesInTwips) {
    EXPECT_EQ(box_.widthInTwips(), 600);
    EXPECT_EQ(box_.heightInTwips(), 300);
    box_.Line(450, 150, 150, 75, red); // from any corner
    EXPECT_EQ(redPart(), QRect(10, 5, 20, 5));
    box_.Cls();
    EXPECT_EQ(redPart(), QRect());
    box_.Line(-1e6, 285, 1e6, 1e6, red);
    EXPECT_EQ(redPart(), QRect(0, 19, 40, 1));
}

TEST_F(PictureBoxTest, KeepsItsDrawingWhenItsSizeChanges) {
    box_.Line(0, 0, 150, 150, red);
    box_.resize(80, 60);
    EXPECT_EQ(redPart(), QRect(0, 0, 10, 10));
    box_.Line(900, 600, 975, 660, red);
    EXPECT_EQ(redPart(), QRect(0, 0, 65, 44));
    box_.resize(5, 5);
    EXPECT_EQ(redPart(), QRect(0, 0, 5, 5));
}

TEST_F(PictureBoxTest, PrintsAtItsCurrentPosition) {
    box_.setProperty("CurrentX", 300);
    box_.setProperty("Currenty", 75);
    box_.setFont(QFont(QStringLiteral("Arial"), 8, QFont::Black));
    box_.Print(QStringLiteral("HHHH"), red);
    const QRect part = redPart();
    EXPECT_FALSE(part.isEmpty());
    EXPECT_GE(part.left(), 20);
    EXPECT_GE(part.top(), 5);
}

} // namespace
} // namespace blockhouse
