#pragma once

#include <csetjmp>
#include <cstdio>  // jpeglib.h uses FILE without it

#include <jerror.h>
#include <jpeglib.h>

namespace orv {

// Error handling for libjpeg, whose own would end the process. A caller arms it by
// `if (setjmp(errors.escape) != 0) return false;` in a function that holds no object with a destructor.
struct JpegErrors : jpeg_error_mgr {
  std::jmp_buf escape;

  JpegErrors() {
    jpeg_std_error(this);
    error_exit = [](j_common_ptr codec) { Escape(codec); };
    emit_message = [](j_common_ptr codec, int level) {
      if (level < 0 && IsDamage(codec->err->msg_code)) Escape(codec);
    };
    output_message = [](j_common_ptr) {};
  }

  [[noreturn]] static void Escape(j_common_ptr codec) {
    std::longjmp(static_cast<JpegErrors*>(codec->err)->escape, 1);
  }

 private:
  // Warnings that mean lost pixels; the library would go on with grey in their place.
  static bool IsDamage(int code) {
    return code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER || code == JWRN_HUFF_BAD_CODE ||
           code == JWRN_MUST_RESYNC;
  }
};

}  // namespace orv
