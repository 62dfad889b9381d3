#pragma once

namespace orv {

// One object of a kind, which comes into being at its first use and stays for the life of the program.
template <class T>
class Instance {
 public:
  T* operator->() { return &Get(); }
  T& operator*() { return Get(); }

 private:
  static T& Get() {
    static T object;
    return object;
  }
};

}  // namespace orv
