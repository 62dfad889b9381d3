#pragma once

#include <QImage>

namespace orv::artwork {

// Effects on a premultiplied image; lengths in its pixels, angles in degrees clockwise from the right.

QImage Blurred(const QImage& image, double radius);
// The image's shape filled with one colour.
QImage Filled(const QImage& image, const QColor& colour);
// Shades the shape as if it stood out, rounded within `depth` of its edge, with a highlight of `shine`.
void Emboss(QImage& image, double depth, double shine, double light_angle);
// A light line of `width` inside the shape on the side towards the light.
void LightRim(QImage& image, double width, const QColor& colour, double light_angle);
// Lightens and darkens the shape in blotches of `size`. `at` is the image's place in the whole.
void Mottle(QImage& image, double strength, double size, QPoint at);

// A premultiplied pixel times `factor` below 1, or moved towards white above it.
QRgb Shaded(QRgb pixel, double factor);
// Plain mix of two colours.
QRgb Mixed(QRgb a, QRgb b, double part_of_b);

}  // namespace orv::artwork
