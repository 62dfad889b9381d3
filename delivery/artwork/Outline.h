#pragma once

#include <QPainterPath>
#include <QStringList>

namespace orv::artwork {

// Outlines from lists of points "x,y". A curve goes smoothly through the points; one that ends in "*"
// is a corner.

// A closed curve.
QPainterPath Blob(const QStringList& points);
// A closed curve of which the points tell the right half from top to bottom; the left half mirrors it
// about x = 0.
QPainterPath Half(const QStringList& points);
// A stroke with round ends along an open curve. `widths` is one number or several joined by ":", spread
// evenly along it.
QPainterPath Limb(const QString& widths, const QStringList& points);
// A star with `count` points between the two radii, the first one at `turn` degrees.
QPainterPath Star(QPointF centre, double outer, double inner, int count, double turn);

}  // namespace orv::artwork
