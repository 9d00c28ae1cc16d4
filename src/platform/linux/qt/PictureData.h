#pragma once

#include <span>

namespace onlinux {

// In parts of the picture's side, from its top left corner.
struct Corner {
  double x;
  double y;
};

// One area of a picture, filled with one colour over those before it.
struct Area {
  int picture;       // its number among the project's pictures
  unsigned int rgb;  // 0xRRGGBB
  std::span<const Corner> outline;
};

// The areas of all pictures, from the back to the front; their source is generated.
std::span<const Area> PictureAreas();

}  // namespace onlinux
