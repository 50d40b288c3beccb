#ifndef ORVIA_APP_CONTRAST_H
#define ORVIA_APP_CONTRAST_H

#include "records/main_view.h"

/// Contrast of two colours, 1 (none) to 21 (black on white), by the definition of the Web Content
/// Accessibility Guidelines 2.1.
[[nodiscard]] double ContrastRatio(Colour a, Colour b);

/// The ground, a dark or a pale one, on which text of that colour reads best. No single ground
/// would do: on the darkest of all the link's blue has 2.3 to 1, on the lightest its orange 2.7.
[[nodiscard]] Colour GroundFor(Colour text);

#endif  // ORVIA_APP_CONTRAST_H
