// Writes 24-bit RGB rows as a PNG file (stored deflate blocks: no compression
// library needed, and the screenshot stays byte-exact).
#pragma once
#include <cstdint>
#include <string>
#include <vector>

bool WritePng(const std::string& path, int width, int height, const std::vector<uint8_t>& rgb);
