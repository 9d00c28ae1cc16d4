#pragma once

#include <span>

namespace onlinux {

// One drawing of a picture, as a PNG file.
struct Drawing {
  int picture;  // its number among the project's pictures
  std::span<const unsigned char> png;
};

// All drawings that the build put into the program; their source is generated.
std::span<const Drawing> DrawnPictures();

}  // namespace onlinux
