// Tells listeners what happened, inside the call that caused it. Listeners are called from a snapshot; one that is
// withdrawn on the way hears nothing more, one that is added hears of the next event.
#pragma once

#include <algorithm>
#include <functional>
#include <vector>

#include "model/host_model.h"

namespace quorvel::host {

class EventDispatcher {
 public:
  void advise(ApplicationEvents& listener) {
    if (std::find(listeners_.begin(), listeners_.end(), &listener) == listeners_.end()) listeners_.push_back(&listener);
  }
  void unadvise(ApplicationEvents& listener) { std::erase(listeners_, &listener); }

  template <class Raise>
  void raise(Raise raise) {
    if (muted_) return;
    const std::vector<ApplicationEvents*> snapshot = listeners_;
    for (ApplicationEvents* listener : snapshot) {
      if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end()) raise(*listener);
    }
  }

  /// While a shape's going is announced, the arrival of others is told only when that announcement is over.
  template <class Raise>
  void raiseHoldingArrivals(Raise raise) {
    ++holding_;
    this->raise(raise);
    if (--holding_ > 0) return;
    while (!held_.empty()) {
      const auto next = std::move(held_.front());
      held_.erase(held_.begin());
      next();
    }
  }
  void arrival(std::function<void()> tell) {
    if (holding_) {
      held_.push_back(std::move(tell));
    } else {
      tell();
    }
  }

  /// While one stands nobody is told anything: undo, and the making of things that are announced as a whole.
  class Mute {
   public:
    explicit Mute(EventDispatcher& dispatcher) : dispatcher_(dispatcher) { ++dispatcher_.muted_; }
    ~Mute() { --dispatcher_.muted_; }
    Mute(const Mute&) = delete;
    Mute& operator=(const Mute&) = delete;

   private:
    EventDispatcher& dispatcher_;
  };

 private:
  std::vector<ApplicationEvents*> listeners_;
  std::vector<std::function<void()>> held_;
  int holding_ = 0, muted_ = 0;
};

}  // namespace quorvel::host
