#pragma once

#include <cstddef>
#include <cstdint>

// What each target defines, for libFuzzer and for the driver alike: takes one input through the program. An
// error that the program tells is no fault; anything else that ends the process is.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
