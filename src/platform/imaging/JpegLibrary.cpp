#include "imaging/JpegLibrary.h"

#include <cstdlib>

#include "imaging/inner/JpegErrors.h"

namespace orv {
namespace {

enum Failure : int { kBadRecord = -1, kOpenFailed = -2, kWriteFailed = -3 };

// What a record's `state` points to between ijlInit and ijlFree. It holds nothing, so that a caller which
// leaves by an error without ijlFree loses nothing.
int ready_mark;

bool IsUsable(const JPEG_CORE_PROPERTIES& record) {
  return record.state == &ready_mark && record.DIBBytes != nullptr && record.JPGFile != nullptr &&
         record.DIBWidth > 0 && record.DIBHeight != 0 && record.DIBHeight > -JPEG_MAX_DIMENSION - 1L &&
         record.DIBPadBytes >= 0 && record.JPGWidth == record.DIBWidth &&
         record.JPGHeight == std::abs(record.DIBHeight) && record.jquality >= 0 && record.jquality <= 100;
}

void Describe(jpeg_compress_struct* codec, const JPEG_CORE_PROPERTIES& record) {
  codec->image_width = static_cast<JDIMENSION>(record.JPGWidth);
  codec->image_height = static_cast<JDIMENSION>(record.JPGHeight);
  codec->input_components = 3;
  codec->in_color_space = JCS_EXT_BGR;
  jpeg_set_defaults(codec);
  jpeg_set_quality(codec, record.jquality, TRUE);
  codec->density_unit = 1;  // dots an inch
  codec->X_density = codec->Y_density = 96;
  // Colour at full resolution: small coloured text on a card frays with less.
  codec->comp_info[0].h_samp_factor = 1;
  codec->comp_info[0].v_samp_factor = 1;
}

void WriteRows(jpeg_compress_struct* codec, const JPEG_CORE_PROPERTIES& record) {
  const std::ptrdiff_t row_bytes = std::ptrdiff_t{3} * record.DIBWidth + record.DIBPadBytes;
  const bool bottom_up = record.DIBHeight < 0;
  while (codec->next_scanline < codec->image_height) {
    const std::ptrdiff_t y = codec->next_scanline;
    const std::uint8_t* row = record.DIBBytes + row_bytes * (bottom_up ? record.JPGHeight - 1 - y : y);
    JSAMPROW rows[1] = {const_cast<JSAMPROW>(row)};
    jpeg_write_scanlines(codec, rows, 1);
  }
}

bool Compress(jpeg_compress_struct* codec, JpegErrors* errors, const JPEG_CORE_PROPERTIES& record,
              std::FILE* file) {
  codec->err = errors;
  if (setjmp(errors->escape) != 0) return false;
  jpeg_create_compress(codec);
  jpeg_stdio_dest(codec, file);
  Describe(codec, record);
  jpeg_start_compress(codec, TRUE);
  WriteRows(codec, record);
  jpeg_finish_compress(codec);
  return true;
}

}  // namespace

int ijlInit(JPEG_CORE_PROPERTIES* record) {
  if (record == nullptr) return kBadRecord;
  *record = JPEG_CORE_PROPERTIES{};
  record->jquality = 75;
  record->state = &ready_mark;
  return IJL_OK;
}

int ijlWrite(JPEG_CORE_PROPERTIES* record, int operation) {
  if (record == nullptr || operation != IJL_JFILE_WRITEWHOLEIMAGE || !IsUsable(*record)) return kBadRecord;
  std::FILE* file = std::fopen(record->JPGFile, "wb");
  if (file == nullptr) return kOpenFailed;
  JpegErrors errors;
  jpeg_compress_struct codec = {};
  bool written = Compress(&codec, &errors, *record, file);
  jpeg_destroy_compress(&codec);
  written = std::fclose(file) == 0 && written;
  return written ? IJL_OK : kWriteFailed;
}

int ijlFree(JPEG_CORE_PROPERTIES* record) {
  if (record == nullptr || record->state != &ready_mark) return kBadRecord;
  record->state = nullptr;
  return IJL_OK;
}

}  // namespace orv
