// Pictures drawn as SVG, sharp at any scale.
#pragma once

#include <QIcon>
#include <QRectF>

#include <initializer_list>

class QPainter;

namespace blockhouse {

void paintSvg(const QString& resource, QPainter& painter, const QRectF& target);

// With a square picture for each side length, in pixels.
[[nodiscard]] QIcon svgIcon(const QString& resource, std::initializer_list<int> sides);

// The picture of a window whose text is not all in its file: a dot in its lower right corner.
[[nodiscard]] QIcon withDot(const QIcon& picture);

} // namespace blockhouse
