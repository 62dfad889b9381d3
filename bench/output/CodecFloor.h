#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The least that a card can cost: the JPEG library called as its manual says, in one thread. It shares no
// code with the program that is measured against it. A failure ends the process, as the library's own handler
// does.
namespace codec_floor {

struct Pixels {
  unsigned width = 0, height = 0;
  std::vector<std::uint8_t> bytes;  // blue, green, red and one to spare, row by row from the top
};

// Replaces what `pixels` holds, whose room is used again.
void Decode(const void* jpeg, std::size_t size, Pixels* pixels);

// Writes a file of quality 90 with colour at full resolution, and waits for the disk.
void Encode(const Pixels& pixels, const std::string& path);

}  // namespace codec_floor
