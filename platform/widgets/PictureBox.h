// A box that is drawn on by calls and keeps its drawing. Measures are twips. The members can also be reached by
// name at run time (properties and invokable methods), under the names given here.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace blockhouse {

class PictureBox : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool AutoRedraw MEMBER autoRedraw_)
    Q_PROPERTY(int FillStyle MEMBER fillStyle_)
    Q_PROPERTY(int DrawStyle MEMBER drawStyle_)
    Q_PROPERTY(double Width READ widthInTwips)
    Q_PROPERTY(double Height READ heightInTwips)
    Q_PROPERTY(double CurrentX MEMBER currentX_)
    Q_PROPERTY(double Currenty MEMBER currentY_)

public:
    explicit PictureBox(QWidget* parent = nullptr);

    [[nodiscard]] double widthInTwips() const;
    [[nodiscard]] double heightInTwips() const;

    // A filled rectangle between two corners, in twips; what lies outside the box is cut off.
    Q_INVOKABLE void Line(double x1, double y1, double x2, double y2, int colour);
    // One line of text whose top-left corner is at (CurrentX, Currenty), in the box's font.
    Q_INVOKABLE void Print(const QString& text, int colour);
    // Takes the drawing off again.
    Q_INVOKABLE void Cls();
    // Puts the drawing on the screen now.
    Q_INVOKABLE void Refresh();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QPixmap& drawing(); // as large as the box
    void fitDrawing();

    QPixmap drawing_; // empty while nothing is drawn
    bool autoRedraw_ = false;
    int fillStyle_ = 1;
    int drawStyle_ = 0;
    double currentX_ = 0;
    double currentY_ = 0;
};

} // namespace blockhouse
