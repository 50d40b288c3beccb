#include "archive/plot_looks.h"

#include <array>

namespace {

// Colours that those who see no red or no green tell apart as well: M. Okabe and K. Ito, Color
// Universal Design (2008); where one of these is too faint on white, one of P. Tol, Colour Schemes
// (SRON/EPS/TN/09-002), or a darker shade.
struct Pair {
    std::uint32_t OnLight;
    std::uint32_t OnDark;
};
constexpr std::array<Pair, 8> Colours = {{{0x0072B2, 0x56B4E9},
                                          {0xD55E00, 0xE69F00},
                                          {0x008060, 0x2FC39A},
                                          {0xAA4499, 0xCC79A7},
                                          {0x2A2A2A, 0xF0F0F0},
                                          {0x8C6D00, 0xF0E442},
                                          {0x332288, 0x9DA5FF},
                                          {0x882255, 0xFF8A65}}};
constexpr std::size_t Markers = 6;

}  // namespace

PlotLook PlotLookOf(std::size_t number) {
    const Pair& colours = Colours[number % Colours.size()];
    return {colours.OnLight, colours.OnDark, static_cast<PlotMarker>(number % Markers)};
}
