// Writes the seed corpus of byte_swap_fuzz into the directory it is given:
// a valid record of every type of the table in its Macintosh form (to be
// loaded) and in its native form (to be written).
#include <cstdio>
#include <string>

#include "byte_swap_input.h"
#include "resources/sample_resources.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <directory>\n", argv[0]);
    return 2;
  }
  int written = 0;
  for (const auto& sample : kwe_samples::AllSamples()) {
    int selector = 0;
    while (kwe_fuzz::ChosenType(uint8_t(selector)) != kwe_samples::TypeOf(sample.type)) ++selector;
    for (int direction = 0; direction < 2; ++direction) {
      kwe_samples::Bytes data = sample.make(direction == 1);
      std::string path = std::string(argv[1]) + "/seed" + std::to_string(written++);
      std::FILE* f = std::fopen(path.c_str(), "wb");
      if (!f) return 1;
      std::fputc(selector, f);
      std::fputc(direction, f);
      std::fwrite(data.data(), 1, data.size(), f);
      if (std::fclose(f) != 0) return 1;
    }
  }
  return 0;
}
