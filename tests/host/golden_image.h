// Screenshots against the images checked in beside the tests: 8-bit
// run-length BMP files (a window's few colours compress to a few
// kilobytes, and any image viewer opens them).
#pragma once
#include <string>
#include <vector>

namespace kwe_drive {

struct Image {
  int width = 0, height = 0;
  std::vector<unsigned char> rgb;  // top row first, 3 bytes a pixel
};

// False when the image has more than 256 colours or the file cannot be
// written.
bool WriteRunLengthBmp(const std::string& path, const Image& image);
// One of the files WriteRunLengthBmp writes; false when the file is
// missing, cut short or another kind of bitmap.
bool ReadBmp(const std::string& path, Image* image);

// Compares shot with <folder>/<name>.bmp and answers what differs (empty
// when nothing does). With KWE_REGOLD=1 in the environment the shot
// replaces the checked-in image instead. A mismatch leaves the shot as
// <name>-actual.bmp in the working folder.
std::string CompareWithGolden(const std::string& folder, const std::string& name,
                              const Image& shot);

}  // namespace kwe_drive
