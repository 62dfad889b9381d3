#pragma once

namespace orv {

// While one lives, each Instance is another object of its kind: what is drawn then goes to surfaces of its
// own, and what the user sees stays as it is. They nest.
class OffScreen {
 public:
  OffScreen() { ++living_; }
  ~OffScreen() { --living_; }
  OffScreen(const OffScreen&) = delete;
  OffScreen& operator=(const OffScreen&) = delete;
  static bool Asked() { return living_ > 0; }

 private:
  static inline int living_ = 0;
};

// The one object of a kind, which comes into being at its first use and stays for the life of the program.
template <class T>
class Instance {
 public:
  T* operator->() { return &Get(); }
  T& operator*() { return Get(); }

 private:
  static T& Get() {
    if (OffScreen::Asked()) {
      static T unseen;
      return unseen;
    }
    static T object;
    return object;
  }
};

}  // namespace orv
