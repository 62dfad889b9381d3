#include "forms/Lifetime.h"

#include <QThread>
#include <algorithm>
#include <utility>
#include <vector>

namespace orv {
namespace {

constexpr int kNoEvent = -1;

struct Later {
  int level;  // of the message loop that dealt out the event in hand
  std::function<void()> action;
};

struct State {
  int level = kNoEvent;
  std::vector<Later> later;
  std::vector<std::function<void()>> at_shutdown;
  bool unloading = false;
};

State& Lifetimes() {
  static State state;
  return state;
}

void RunPutOff(int level) {
  auto& later = Lifetimes().later;
  const auto due = [level](const Later& one) { return one.level >= level; };
  for (;;) {
    const auto next = std::find_if(later.begin(), later.end(), due);
    if (next == later.end()) return;
    const auto action = std::move(next->action);
    later.erase(next);
    action();
  }
}

}  // namespace

EventScope::EventScope() : former_level_(Lifetimes().level) {
  Lifetimes().level = QThread::currentThread()->loopLevel();
}

EventScope::~EventScope() {
  const int level = Lifetimes().level;
  // Otherwise a former event of the same loop is still on the stack and has called this one. What is run
  // counts as part of this event: a widget that dies sends events, which must not run the next action.
  if (former_level_ != level) RunPutOff(level);
  Lifetimes().level = former_level_;
}

void RunLater(std::function<void()> action) {
  if (Lifetimes().level == kNoEvent) return action();
  Lifetimes().later.push_back({Lifetimes().level, std::move(action)});
}

void AtShutdown(std::function<void()> action) {
  Lifetimes().at_shutdown.push_back(std::move(action));
}

void UnloadAll() {
  if (std::exchange(Lifetimes().unloading, true)) return;
  // An action may load a form for the first time, which then unloads at the end.
  auto& actions = Lifetimes().at_shutdown;
  for (std::size_t done = 0; done < actions.size();) {
    const std::size_t known = actions.size();
    for (std::size_t i = known; i > done; --i) {
      const auto action = actions[i - 1];
      action();
    }
    done = known;
  }
  Lifetimes().unloading = false;
}

}  // namespace orv
