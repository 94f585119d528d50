#include "widgets/Contrast.h"

#include <algorithm>
#include <cmath>

namespace Contrast {

namespace {
double channel(double c)
{
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}
} // namespace

double luminance(const QColor &color)
{
    const QColor rgb = color.toRgb();
    return 0.2126 * channel(rgb.redF()) + 0.7152 * channel(rgb.greenF())
           + 0.0722 * channel(rgb.blueF());
}

double ratio(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor textColor(const QColor &hue, const QColor &background, const QColor &fallback)
{
    const QColor hsl = hue.toHsl();
    // Below this luminance white text contrasts more than black, so shades
    // are sought towards white; at 0.18 both reach about 4.6:1.
    const bool darkBackground = luminance(background) < 0.18;
    // Walk the lightness away from the background's, from the hue's own
    // shade outwards; the first readable shade keeps the most colour.
    const int start = hsl.lightness();
    for (int step = 0; step <= 255; step += 5) {
        const int lightness = darkBackground ? std::min(255, start + step) : std::max(0, start - step);
        const QColor candidate = QColor::fromHsl(hsl.hslHue(), hsl.hslSaturation(), lightness);
        if (ratio(candidate, background) >= MinimumTextRatio)
            return candidate.toRgb();
        if (lightness == (darkBackground ? 255 : 0)) // no further shade that way
            break;
    }
    return fallback;
}

QColor warningText(const QPalette &palette)
{
    return textColor(QColor(0xd0, 0x20, 0x20), palette.color(QPalette::Base),
                     palette.color(QPalette::Text));
}

} // namespace Contrast
