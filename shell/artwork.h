// The program's own pictures, drawn from vectors: sharp on every display.
#pragma once

#include <QIcon>
#include <QSize>

class QPainter;
class QRectF;

namespace blockhouse {

// On every button of the window bar; 16 x 16 logical pixels.
[[nodiscard]] QIcon documentPicture();

[[nodiscard]] QIcon applicationIcon();

inline constexpr QSize splashPictureSize{334, 299};

// Fills `target`; undistorted where that has the picture's proportions.
void paintSplashPicture(QPainter& painter, const QRectF& target);

} // namespace blockhouse
