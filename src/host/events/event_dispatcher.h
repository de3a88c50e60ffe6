// Raises events, inside the call that caused them. Listeners are called from a snapshot; one that is withdrawn
// during an event is not called any more, one that is added is called from the next event on.
#pragma once

#include <algorithm>
#include <vector>

#include "host/undo/undo_log.h"
#include "model/upkeep_listener.h"

namespace quorvel::host {

class EventDispatcher {
 public:
  explicit EventDispatcher(UndoLog& undo) : undo_(undo) {}

  void advise(ApplicationEvents& listener) {
    if (!isAdvised(&listener)) listeners_.push_back({&listener, dynamic_cast<UpkeepListener*>(&listener) != nullptr});
  }
  void unadvise(ApplicationEvents& listener) { std::erase_if(listeners_, Is{&listener}); }

  /// For events about no object that could be deleted. Others go through Engine::raise.
  template <class Raise>
  void raise(Raise raise) {
    this->raise(
        Occasion::Change, [] { return true; }, raise);
  }

  /// Whether upkeep of listeners may happen now, see UpkeepListener.
  enum class Occasion { Change, Upkeep };

  /// `isThere` is called before each listener, because the one before may have deleted what the event is
  /// about.
  template <class IsThere, class Raise>
  void raise(Occasion occasion, IsThere isThere, Raise raise) {
    const std::vector<Listener> snapshot = listeners_;
    for (const Listener& each : snapshot) {
      if (!isThere()) return;
      if (!isAdvised(each.listener)) continue;
      const bool isUpkeep = each.keepsUp && (occasion == Occasion::Upkeep || undo_.isSuspended());
      const UndoLog::Attribution attribution(undo_, isUpkeep);
      raise(*each.listener);
    }
  }

 private:
  struct Listener {
    ApplicationEvents* listener;
    bool keepsUp;
  };
  struct Is {
    const ApplicationEvents* listener;
    bool operator()(const Listener& other) const { return other.listener == listener; }
  };
  bool isAdvised(const ApplicationEvents* listener) const {
    return std::any_of(listeners_.begin(), listeners_.end(), Is{listener});
  }

  UndoLog& undo_;
  std::vector<Listener> listeners_;
};

}  // namespace quorvel::host
