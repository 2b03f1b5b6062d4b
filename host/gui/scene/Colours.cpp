#include "host/gui/scene/Colours.h"

#include <array>
#include <cmath>

namespace host::gui {
namespace {

Rgb rgb(double r, double g, double b) {
  auto c = [](double v) { return static_cast<Rgb>(std::lround(std::fmin(std::fmax(v, 0.0), 1.0) * 255.0)); };
  return (c(r) << 16) | (c(g) << 8) | c(b);
}

// Indexes 10-249 run round the colour wheel in steps of 15 degrees, ten shades per hue: even shades are the
// full hue, odd ones the hue paled to half its saturation, each pair darker than the one before.
Rgb wheelColour(int index) {
  const int hueStep = index / 10 - 1;
  const int shade = index % 10;
  const double value[] = {1.0, 1.0, 0.8, 0.8, 0.6, 0.6, 0.5, 0.5, 0.3, 0.3};
  const double saturation = shade % 2 == 0 ? 1.0 : 0.5;
  const double h = hueStep * 15.0 / 60.0;
  const double v = value[shade];
  const double c = v * saturation;
  const double x = c * (1.0 - std::fabs(std::fmod(h, 2.0) - 1.0));
  const double m = v - c;
  const int sector = static_cast<int>(h) % 6;
  const double r[] = {c, x, 0, 0, x, c}, g[] = {x, c, c, x, 0, 0}, b[] = {0, 0, x, c, c, x};
  return rgb(r[sector] + m, g[sector] + m, b[sector] + m);
}

std::array<Rgb, 256> makeTable() {
  std::array<Rgb, 256> table{};
  const Rgb basic[] = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080,
                       0xC0C0C0};
  for (int i = 0; i < 10; ++i) table[i] = basic[i];
  for (int i = 10; i < 250; ++i) table[i] = wheelColour(i);
  const Rgb greys[] = {0x333333, 0x505050, 0x696969, 0x828282, 0xBEBEBE, 0xFFFFFF};
  for (int i = 250; i < 256; ++i) table[i] = greys[i - 250];
  return table;
}

}  // namespace

Rgb indexColour(int index) {
  static const std::array<Rgb, 256> table = makeTable();
  return index >= 1 && index <= 255 ? table[index] : 0xFFFFFF;
}

}  // namespace host::gui
