#include "system/FormPlacement.h"

#include <algorithm>
#include <vector>

namespace zelUtilities {

namespace {

// Pixels of the title that must be on a screen.
constexpr double titleHeight = 24;
constexpr double graspableWidth = 64;

struct Area {
  double left, top, right, bottom;
};

double overlap(double start, double length, double from, double to) {
  return std::max(0.0, std::min(start + length, to) - std::max(start, from));
}

double widthOn(const Area& area, const FormBounds& form) {
  return overlap(form.left, form.width, area.left, area.right);
}

double sizeOn(const Area& area, const FormBounds& form) {
  return widthOn(area, form) * overlap(form.top, form.height, area.top, area.bottom);
}

// So that it lies between the two, its beginning for certain.
double moved(double start, double length, double from, double to) {
  return std::max(from, std::min(start, to - length));
}

}  // namespace

FormBounds withinReach(FormBounds form, std::span<const ScreenArea> areas, TwipsPerPixel unitsPerPixel) {
  if (areas.empty()) return form;
  std::vector<Area> screens;
  for (const ScreenArea& area : areas)
    screens.push_back({area.left * unitsPerPixel.x, area.top * unitsPerPixel.y, area.right * unitsPerPixel.x,
                       area.bottom * unitsPerPixel.y});
  const double grasp = std::min(form.width, graspableWidth * unitsPerPixel.x);
  const double title = titleHeight * unitsPerPixel.y;
  const auto isReachable = [&](const Area& screen) {
    return widthOn(screen, form) >= grasp && form.top >= screen.top && form.top + title <= screen.bottom;
  };
  if (std::any_of(screens.begin(), screens.end(), isReachable)) return form;
  const Area& best = *std::max_element(screens.begin(), screens.end(), [&](const Area& a, const Area& b) {
    return sizeOn(a, form) < sizeOn(b, form);
  });
  form.left = moved(form.left, form.width, best.left, best.right);
  form.top = moved(form.top, form.height, best.top, best.bottom);
  return form;
}

}  // namespace zelUtilities
