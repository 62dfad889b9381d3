#pragma once

#include <functional>
#include <utility>

namespace orv {

// An event of a control or a form with one subscriber, which is usually the handler named control,
// underscore, event. Raising an event that nobody subscribes to does nothing.
template <class... Arguments>
class Event {
 public:
  void operator=(std::function<void(Arguments...)> handler) { handler_ = std::move(handler); }
  // Whether anybody subscribes.
  explicit operator bool() const { return handler_ != nullptr; }
  void operator()(Arguments... arguments) const {
    // A copy, so that a handler may replace or destroy the control that raises it.
    if (const auto handler = handler_) handler(arguments...);
  }

 private:
  std::function<void(Arguments...)> handler_;
};

}  // namespace orv
