#pragma once

#include <QByteArray>
#include <cstdint>

namespace orv {

// The face of a JPEG library that exchanges one record with its caller: `ijlInit` prepares the record,
// the caller fills in source, target and quality, `ijlWrite` compresses, `ijlFree` releases. The names
// are those of the library whose record this is; libjpeg-turbo stands behind it. A file tells 96 dots an
// inch.
struct JPEG_CORE_PROPERTIES {
  std::int32_t DIBWidth = 0;               // pixels
  std::int32_t DIBHeight = 0;              // pixels; negative for rows that lie bottom-up
  const std::uint8_t* DIBBytes = nullptr;  // blue, green, red; not owned; the lowest address of the block
  std::int32_t DIBPadBytes = 0;            // bytes behind each row
  const char* JPGFile = nullptr;           // target path, ended by a zero byte; not owned
  std::int32_t JPGWidth = 0;               // pixels
  std::int32_t JPGHeight = 0;              // pixels
  std::int32_t jquality = 0;               // 0 to 100, libjpeg's scale
  void* state = nullptr;                   // owned by the library between ijlInit and ijlFree
};

inline constexpr int IJL_OK = 0;
inline constexpr int IJL_JFILE_WRITEWHOLEIMAGE = 8;

// Each returns 0 on success and else a negative code; none throws and none ends the process.
int ijlInit(JPEG_CORE_PROPERTIES* record);
int ijlWrite(JPEG_CORE_PROPERTIES* record, int operation);
int ijlFree(JPEG_CORE_PROPERTIES* record);

}  // namespace orv
