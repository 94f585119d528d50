#pragma once

#include <QColor>
#include <QPalette>

// Text colours chosen against the background they are shown on (a palette's
// base, a colour a tool asked for in the console), so that light and dark
// appearances both stay readable (a contrast ratio of at least 4.5:1, what
// body text needs).
namespace Contrast {

constexpr double MinimumTextRatio = 4.5;

// Relative luminance of a colour (0 black ... 1 white), sRGB.
double luminance(const QColor &color);
// Contrast ratio of two colours, from 1 (same) to 21 (black on white).
double ratio(const QColor &a, const QColor &b);

// A colour of the given hue for text on `background`: as saturated as the
// hue allows, lightened on dark backgrounds and darkened on light ones until
// it reaches the minimum ratio; `fallback` when no shade of the hue does.
QColor textColor(const QColor &hue, const QColor &background, const QColor &fallback);

// The colour of text that reports a problem ("Missing") in item views of
// this palette: a red readable on the palette's base colour.
QColor warningText(const QPalette &palette);

} // namespace Contrast
