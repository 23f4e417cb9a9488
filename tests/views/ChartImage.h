// Looking at drawn charts as a user would: where on the picture a colour stands.
#pragma once

#include <QColor>
#include <QImage>
#include <optional>

namespace pemlo::test {

// Pixels near `colour` (each channel within `tolerance`).
inline bool Near(QRgb pixel, QColor colour, int tolerance = 60)
{
    return std::abs(qRed(pixel) - colour.red()) <= tolerance && std::abs(qGreen(pixel) - colour.green()) <= tolerance &&
           std::abs(qBlue(pixel) - colour.blue()) <= tolerance;
}

struct Extent {
    int left = 0, right = 0, top = 0, bottom = 0;
};

// The box around every pixel that `match` accepts; nothing when there is none.
template <class Match>
std::optional<Extent> ExtentWhere(const QImage& image, Match match)
{
    std::optional<Extent> e;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            if (!match(image.pixel(x, y))) continue;
            if (!e) e = Extent{x, x, y, y};
            e->left = std::min(e->left, x);
            e->right = std::max(e->right, x);
            e->top = std::min(e->top, y);
            e->bottom = std::max(e->bottom, y);
        }
    return e;
}

inline std::optional<Extent> ExtentOf(const QImage& image, QColor colour)
{
    return ExtentWhere(image, [&](QRgb p) { return Near(p, colour); });
}

}  // namespace pemlo::test
