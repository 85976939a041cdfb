#pragma once

class QObject;

namespace blockhouse {

// Paints a bar on a picture box: value as a share of maximum, blue on white, with the percentage in the middle when
// the box is high enough for text. Then puts it on the screen and serves the event queue, so that any window, the
// box's included, may be gone when it returns.
//
// The box is any object that offers, by name at run time and in twips, the properties AutoRedraw, FillStyle,
// DrawStyle, Width, Height, CurrentX, Currenty and the invokable methods Line(double,double,double,double,int),
// Print(QString,int), Refresh(). A step that needs a missing one is skipped.
void DrawProgress(QObject& box, double value, double maximum);

} // namespace blockhouse
