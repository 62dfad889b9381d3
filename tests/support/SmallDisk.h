#pragma once

#include <sys/resource.h>

#include <csignal>

namespace orv {

// While one lives, no file of this process can grow past a size, as on a disk that is full.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &former_);
    const rlimit small{bytes, former_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &former_);
    std::signal(SIGXFSZ, handler_);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  rlimit former_{};
  void (*handler_)(int);
};

}  // namespace orv
