#include "platform/widgets/PictureBox.h"
#include "shell/DrawProgress.h"

#include <gtest/gtest.h>
#include <QImage>

#include <limits>

namespace blockhouse {
namespace {

constexpr QRgb blue = qRgb(0, 0, 255);
constexpr QRgb white = qRgb(255, 255, 255);

// How many pixels from the left are blue; -1 when the rest is not white.
int blueWidth(PictureBox& box) {
    const QImage image = box.grab().toImage();
    const int y = image.height() / 2;
    int x = 0;
    while (x < image.width() && image.pixel(x, y) == blue)
        ++x;
    for (int rest = x; rest < image.width(); ++rest) {
        if (image.pixel(rest, y) != white)
            return -1;
    }
    return x;
}

TEST(DrawProgress, PaintsTheShareInBlueOnWhite) {
    PictureBox box;
    box.resize(100, 9); // too low for a label
    const double infinite = std::numeric_limits<double>::infinity();

    const struct {
        double value;
        double maximum;
        int pixels;
    } cases[] = {
        {100, 100, 99}, // the bar ends 10 twips before its share
        {50, 100, 49},  {0, 100, 0}, {150, 100, 100}, {2, 4, 49},         {1, 0, 0},
        {0, 0, 0},      {-3, 1, 0},  {1e300, 1, 100}, {infinite, 1, 100}, {0, 7, 0},
    };

    for (const auto& [value, maximum, pixels] : cases) {
        DrawProgress(box, value, maximum);
        EXPECT_EQ(blueWidth(box), pixels) << value << " of " << maximum;
        EXPECT_EQ(box.property("CurrentX").toDouble(), 1500 / 2 - 100);
        EXPECT_EQ(box.property("Currenty").toDouble(), 135 / 2.0 - 125);
        EXPECT_TRUE(box.property("AutoRedraw").toBool());
        EXPECT_EQ(box.property("FillStyle").toInt(), 0);
    }
}

TEST(DrawProgress, LabelsABoxThatIsHighEnoughInItsMiddle) {
    PictureBox box;
    box.resize(200, 30);

    const struct {
        double value;
        QRgb ground;
    } cases[] = {{0, white}, {99, blue}}; // the label stands clear of the bar's end, or wholly on the bar

    for (const auto& [value, ground] : cases) {
        DrawProgress(box, value, 100);
        const QImage image = box.grab().toImage();
        QRect label;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < 190; ++x) {
                if (image.pixel(x, y) != ground)
                    label |= QRect(x, y, 1, 1);
            }
        }
        EXPECT_NEAR(label.center().x(), 100, 3) << value;
        EXPECT_NEAR(label.center().y(), 15, 3) << value;
        EXPECT_LT(label.width(), 60) << value;
    }
}

// Offers some of a picture box's members only.
class HalfABox : public QObject {
    Q_OBJECT
    Q_PROPERTY(double Width MEMBER width)
    Q_PROPERTY(double Height MEMBER height)

public:
    Q_INVOKABLE void Line(double x1, double y1, double x2, double y2, int colour) {
        lines.append({x1, y1, x2, y2, static_cast<double>(colour)});
    }

    double width = 1000;
    double height = 100;
    QList<QList<double>> lines;
};

class RefreshOnly : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void Refresh() { ++refreshed; }

    int refreshed = 0;
};

TEST(DrawProgress, SkipsWhatTheObjectLacks) {
    HalfABox box;
    DrawProgress(box, 1, 2);
    const QList<QList<double>> expected{{0, 0, 1000, 100, 16777215}, {0, 0, 490, 100, 16711680}};
    EXPECT_EQ(box.lines, expected);

    RefreshOnly other;
    DrawProgress(other, 1, 2);
    EXPECT_EQ(other.refreshed, 1);
    EXPECT_TRUE(other.dynamicPropertyNames().isEmpty()) << "nothing may be added to the object";
}

} // namespace
} // namespace blockhouse

#include "draw_progress_test.moc"
