#include "CodecFloor.h"

#include <unistd.h>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

namespace codec_floor {

void Decode(const void* jpeg, std::size_t size, Pixels* pixels) {
  jpeg_decompress_struct codec = {};
  jpeg_error_mgr errors;
  codec.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&codec);
  jpeg_mem_src(&codec, static_cast<const unsigned char*>(jpeg), static_cast<unsigned long>(size));
  jpeg_read_header(&codec, TRUE);
  codec.out_color_space = JCS_EXT_BGRX;
  jpeg_start_decompress(&codec);
  pixels->width = codec.output_width;
  pixels->height = codec.output_height;
  pixels->bytes.resize(std::size_t{4} * codec.output_width * codec.output_height);
  while (codec.output_scanline < codec.output_height) {
    JSAMPROW row = pixels->bytes.data() + std::size_t{4} * codec.output_width * codec.output_scanline;
    jpeg_read_scanlines(&codec, &row, 1);
  }
  jpeg_finish_decompress(&codec);
  jpeg_destroy_decompress(&codec);
}

void Encode(const Pixels& pixels, const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) std::abort();
  jpeg_compress_struct codec = {};
  jpeg_error_mgr errors;
  codec.err = jpeg_std_error(&errors);
  jpeg_create_compress(&codec);
  jpeg_stdio_dest(&codec, file);
  codec.image_width = pixels.width;
  codec.image_height = pixels.height;
  codec.input_components = 4;
  codec.in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(&codec);
  jpeg_set_quality(&codec, 90, TRUE);
  codec.comp_info[0].h_samp_factor = codec.comp_info[0].v_samp_factor = 1;
  jpeg_start_compress(&codec, TRUE);
  while (codec.next_scanline < codec.image_height) {
    auto* row =
        const_cast<JSAMPROW>(pixels.bytes.data()) + std::size_t{4} * pixels.width * codec.next_scanline;
    jpeg_write_scanlines(&codec, &row, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  if (std::fflush(file) != 0 || fsync(fileno(file)) != 0 || std::fclose(file) != 0) std::abort();
}

}  // namespace codec_floor
