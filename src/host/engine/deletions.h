// Deletions of shapes that are going on, and the copies that handlers make of what is about to be deleted.
#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "host/sheet/ids.h"

namespace quorvel::host {

using SheetMap = std::unordered_map<SheetId, SheetId>;

class Deletions {
 public:
  /// While it lives, a command deletes shapes: selections keep theirs until it ends.
  class Command {
   public:
    explicit Command(Deletions& deletions) : deletions_(deletions) { ++deletions_.commands_; }
    ~Command() { --deletions_.commands_; }
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

   private:
    Deletions& deletions_;
  };

  /// While it lives, BeforeShapeDelete of the shape is raised, and the copies that are made of it are kept.
  class Leaving {
   public:
    Leaving(Deletions& deletions, SheetId shape) : deletions_(deletions), shape_(shape), outer_(deletions.leaving_) {
      deletions_.leaving_ = this;
    }
    ~Leaving() { deletions_.leaving_ = outer_; }
    Leaving(const Leaving&) = delete;
    Leaving& operator=(const Leaving&) = delete;
    /// From the shape and its members to those of the copy; one map for each copy, the oldest first.
    std::vector<SheetMap> takeCopies() { return std::move(copies_); }

   private:
    friend class Deletions;
    Deletions& deletions_;
    const SheetId shape_;
    Leaving* const outer_;
    std::vector<SheetMap> copies_;
  };

  bool areGoingOn() const { return commands_ > 0; }
  void noteCopy(SheetId shape, SheetMap copies) {
    for (Leaving* each = leaving_; each; each = each->outer_) {
      if (each->shape_ == shape) return each->copies_.push_back(std::move(copies));
    }
  }

 private:
  int commands_ = 0;
  Leaving* leaving_ = nullptr;  ///< the innermost one
};

}  // namespace quorvel::host
