#ifndef ORVIA_PLATFORM_QT_TWIPS_H
#define ORVIA_PLATFORM_QT_TWIPS_H

/// A twip is 1/1440 inch, a device-independent pixel 1/96 inch.
inline constexpr int TwipsPerPixel = 15;

/// Device-independent pixels, rounded to the nearest (no length of whole twips lies midway).
[[nodiscard]] constexpr int PixelsOfTwips(int twips) {
    const int half = twips < 0 ? -(TwipsPerPixel / 2) : TwipsPerPixel / 2;
    return (twips + half) / TwipsPerPixel;
}

/// Twips of a length in device-independent pixels.
[[nodiscard]] constexpr int TwipsOfPixels(int pixels) {
    return pixels * TwipsPerPixel;
}

#endif  // ORVIA_PLATFORM_QT_TWIPS_H
