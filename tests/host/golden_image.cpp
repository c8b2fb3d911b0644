#include "host/golden_image.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>

namespace kwe_drive {
namespace {

void Put(std::vector<unsigned char>& out, uint32_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<unsigned char>(v >> (8 * i)));
}

// One row of palette indices in BI_RLE8: repeats as (count, index), other
// stretches of three or more as absolute runs padded to a word.
void EncodeRow(const unsigned char* row, int width, std::vector<unsigned char>& out) {
  for (int i = 0; i < width;) {
    int literal = 0;
    while (i + literal < width && literal < 255 &&
           !(i + literal + 1 < width && row[i + literal] == row[i + literal + 1]))
      ++literal;
    if (literal >= 3) {
      out.insert(out.end(), {0, static_cast<unsigned char>(literal)});
      out.insert(out.end(), row + i, row + i + literal);
      if (literal % 2) out.push_back(0);
      i += literal;
      continue;
    }
    int run = 1;
    while (i + run < width && run < 255 && row[i + run] == row[i]) ++run;
    out.insert(out.end(), {static_cast<unsigned char>(run), row[i]});
    i += run;
  }
  out.insert(out.end(), {0, 0});
}

}  // namespace

bool WriteRunLengthBmp(const std::string& path, const Image& image) {
  std::map<uint32_t, unsigned char> palette;
  std::vector<unsigned char> indices(size_t(image.width) * size_t(image.height));
  for (size_t i = 0; i < indices.size(); ++i) {
    const unsigned char* p = &image.rgb[i * 3];
    uint32_t colour = uint32_t(p[2]) | uint32_t(p[1]) << 8 | uint32_t(p[0]) << 16;
    auto found = palette.find(colour);
    if (found == palette.end()) {
      if (palette.size() == 256) return false;
      found = palette.emplace(colour, static_cast<unsigned char>(palette.size())).first;
    }
    indices[i] = found->second;
  }
  std::vector<unsigned char> bits;  // rows bottom-up, as compressed BMPs have them
  for (int y = image.height - 1; y >= 0; --y)
    EncodeRow(&indices[size_t(y) * size_t(image.width)], image.width, bits);
  bits.insert(bits.end(), {0, 1});
  std::vector<unsigned char> colours(palette.size() * 4);
  for (const auto& [colour, index] : palette)
    for (int c = 0; c < 3; ++c)
      colours[index * 4 + c] = static_cast<unsigned char>(colour >> (8 * c));
  uint32_t offset = 14 + 40 + uint32_t(colours.size());
  std::vector<unsigned char> file = {'B', 'M'};
  Put(file, offset + uint32_t(bits.size()), 4);
  Put(file, 0, 4);
  Put(file, offset, 4);
  for (uint32_t v : {40u, uint32_t(image.width), uint32_t(image.height)}) Put(file, v, 4);
  Put(file, 1, 2);
  Put(file, 8, 2);
  for (uint32_t v :
       {uint32_t(BI_RLE8), uint32_t(bits.size()), 2835u, 2835u, uint32_t(palette.size()), 0u})
    Put(file, v, 4);
  file.insert(file.end(), colours.begin(), colours.end());
  file.insert(file.end(), bits.begin(), bits.end());
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(file.data()), std::streamsize(file.size()));
  return bool(out);
}

bool ReadBmp(const std::string& path, Image* image) {
  std::ifstream in(path, std::ios::binary);
  std::vector<unsigned char> file((std::istreambuf_iterator<char>(in)),
                                  std::istreambuf_iterator<char>());
  if (file.size() < 54 || file[0] != 'B' || file[1] != 'M') return false;
  BITMAPINFOHEADER header;
  uint32_t offset;
  std::memcpy(&offset, &file[10], 4);
  std::memcpy(&header, &file[14], sizeof header);
  size_t colours = header.biClrUsed ? header.biClrUsed : 256;
  if (header.biCompression != BI_RLE8 || header.biBitCount != 8 || header.biWidth <= 0 ||
      header.biHeight <= 0 || colours > 256 || 54 + colours * 4 > offset || offset > file.size())
    return false;
  image->width = header.biWidth;
  image->height = header.biHeight;
  image->rgb.assign(size_t(image->width) * size_t(image->height) * 3, 0);
  // Runs, absolute stretches, ends of rows and the end, from the bottom row.
  int x = 0, y = image->height - 1;
  auto put = [&](unsigned char index) {
    if (x >= image->width || y < 0 || index >= colours) return;
    unsigned char* pixel = &image->rgb[(size_t(y) * size_t(image->width) + size_t(x++)) * 3];
    for (int c = 0; c < 3; ++c) pixel[c] = file[54 + index * 4 + 2 - c];
  };
  for (size_t at = offset; at + 1 < file.size();) {
    unsigned char count = file[at], value = file[at + 1];
    at += 2;
    if (count) {
      while (count--) put(value);
    } else if (value == 0) {
      x = 0;
      --y;
    } else if (value == 1) {
      return true;
    } else if (value >= 3 && at + value <= file.size()) {
      for (int i = 0; i < value; ++i) put(file[at + size_t(i)]);
      at += size_t(value + (value & 1));
    } else {
      return false;  // deltas are never written
    }
  }
  return false;
}

std::string CompareWithGolden(const std::string& folder, const std::string& name,
                              const Image& shot) {
  std::string path = folder + "/" + name + ".bmp";
  const char* regold = std::getenv("KWE_REGOLD");
  if (regold && std::string(regold) == "1")
    return WriteRunLengthBmp(path, shot) ? "" : "could not rewrite " + path;
  Image golden;
  std::string differs;
  if (!ReadBmp(path, &golden)) {
    differs = "no golden image " + path;
  } else if (golden.width != shot.width || golden.height != shot.height) {
    differs = "size " + std::to_string(shot.width) + "x" + std::to_string(shot.height) +
              ", golden " + std::to_string(golden.width) + "x" + std::to_string(golden.height);
  } else {
    size_t count = 0, first = 0;
    for (size_t i = 0; i < shot.rgb.size(); i += 3)
      if (shot.rgb[i] != golden.rgb[i] || shot.rgb[i + 1] != golden.rgb[i + 1] ||
          shot.rgb[i + 2] != golden.rgb[i + 2])
        if (count++ == 0) first = i / 3;
    if (count)
      differs = std::to_string(count) + " pixels differ, the first at (" +
                std::to_string(first % size_t(shot.width)) + ", " +
                std::to_string(first / size_t(shot.width)) + ")";
  }
  if (!differs.empty()) WriteRunLengthBmp(name + "-actual.bmp", shot);
  return differs;
}

}  // namespace kwe_drive
