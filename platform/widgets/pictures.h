// The program's own pictures, which its resources hold.
#pragma once

#include <QIcon>
#include <QRectF>

#include <initializer_list>

class QPainter;

namespace blockhouse {

// `resource` is the vector drawing. Where the program is built without the toolkit's module for such drawings, its
// resources hold pictures drawn from it in several sizes, and the one that fits best is taken.
void paintPicture(const QString& resource, QPainter& painter, const QRectF& target);

// With a square picture for each side length, in pixels.
[[nodiscard]] QIcon pictureIcon(const QString& resource, std::initializer_list<int> sides);

// The picture of a window whose text is not all in its file: a dot in its lower right corner.
[[nodiscard]] QIcon withDot(const QIcon& picture);

} // namespace blockhouse
