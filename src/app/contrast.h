#ifndef ORVIA_APP_CONTRAST_H
#define ORVIA_APP_CONTRAST_H

#include "records/main_view.h"

/// Contrast of two colours, 1 (none) to 21 (black on white), by the definition of the Web Content
/// Accessibility Guidelines 2.1.
[[nodiscard]] double ContrastRatio(Colour a, Colour b);

/// The ground, black or white, on which text of that colour reads best.
[[nodiscard]] Colour GroundFor(Colour text);

#endif  // ORVIA_APP_CONTRAST_H
