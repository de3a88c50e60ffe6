// A row of changes of Task IDs, and what it makes of a hyperlink: where the link ends and how its description reads.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "base/maybe.h"

namespace quorvel::addin {

struct IdChange {
  std::string before, now;
  /// False when the Task kept its ID: hyperlinks stay, but a connector showed the new ID for a moment.
  bool moves = true;
};

/// The texts of a hyperlink.
struct LinkText {
  std::string address, description;
};

/// Changes that happen one after the other, no two of them to the same ID. A hyperlink names its Task by the ID alone,
/// so that a change carries along all links that name its old ID at that time, also those that earlier changes have
/// brought there: when IDs cross, links end on the later Task. The answers are those of the changes one by one; each
/// change is looked at once and not once for every link.
class IdChanges {
 public:
  explicit IdChanges(std::vector<IdChange> inOrder);

  /// True when a change concerns a link that names `id` at first.
  bool concern(const std::string& id) const { return first(id) >= 0; }
  /// The ID that such a link names in the end; nothing when no change moves it.
  Maybe<std::string> endOf(const std::string& id) const;
  /// True when such a link gets the ID `other` on its way, or, unless `movesOnly`, a Task on its way refuses that ID.
  bool pass(const std::string& id, const std::string& other, bool movesOnly) const;

  /// The new description of a hyperlink; nothing when it does not change. A description that contains the link's
  /// address becomes the new address.
  Maybe<std::string> descriptionOf(const LinkText& link) const;
  /// The same for another hyperlink of a shape whose first one decides: the description of `first` must contain the
  /// address of `link`. The first link moves first.
  Maybe<std::string> descriptionOf(const LinkText& link, const LinkText& first) const;

 private:
  // Changes are known by their place in the row; -1 is none.
  int first(const std::string& id) const;
  int firstMove(const std::string& id) const;
  int moveAfter(int move) const;
  int describesFrom(const LinkText& link) const;
  const IdChange& at(int place) const { return changes_[static_cast<std::size_t>(place)]; }

  /// What follows for a link that a change concerns.
  struct Way {
    int next = -1;   ///< the next change that concerns it
    int move = -1;   ///< the first move from here on, this one included
    int end = -1;    ///< the last move
    int length = 1;  ///< this change and those that lead to it, in a numbering in which these follow it directly
    int slot = 0;    ///< its number
  };
  Way& way(int place) { return ways_[static_cast<std::size_t>(place)]; }
  const Way& way(int place) const { return ways_[static_cast<std::size_t>(place)]; }

  std::vector<IdChange> changes_;
  std::vector<Way> ways_;
  std::unordered_map<std::string, int> firstOf_;  ///< by the ID before
  std::unordered_map<std::string, int> byNewId_;
};

}  // namespace quorvel::addin
