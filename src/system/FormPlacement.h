// FormPlacement: where a form has to stand so that its user can reach it.
#pragma once

#include <span>

#include "platform/Desktop.h"

namespace zelUtilities {

// In units of the form's own.
struct FormBounds {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
};

// The bounds as they are where the title (its height, and a part of it that a hand can grasp) lies on one of
// the areas or there is none; else moved, not resized, into the area that shows most of the form, by default
// the first one. The areas are in pixels, of so many units each.
FormBounds withinReach(FormBounds form, std::span<const ScreenArea> areas, TwipsPerPixel unitsPerPixel);

}  // namespace zelUtilities
