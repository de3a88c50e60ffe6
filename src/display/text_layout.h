// The distance between two lower fields of a Task: their texts may wrap, and only a shape that holds a text gives its
// height.
#pragma once

#include <array>
#include <string>

#include "model/host_model.h"
#include "schema/details.h"

namespace quorvel::addin {

/// Gives a line in a Task the text block of a lower field: one and a half times as wide as the Task, to the right of
/// the line, in the Task's own style and colour. TxtHeight follows the text; `guarded` keeps it so.
void setLowerTextBlock(const Shape& line, const Shape& task, bool guarded);

/// A temporary line in the Task that gets one text after the other; deleted with this object.
class TextHeights {
 public:
  explicit TextHeights(const Shape& task);
  ~TextHeights();
  TextHeights(const TextHeights&) = delete;
  TextHeights& operator=(const TextHeights&) = delete;

  /// The text of the row at `position` (of the lower details, from 1); empty outside these.
  const std::string& textAt(int position) const;
  /// The height in inches that it takes, margins included; 0 when it can't be read.
  double heightAt(int position);
  /// As `calcTxtdown` below.
  double down(int position);

 private:
  Shape line_;
  // By position; the first entry stays empty.
  std::array<std::string, schema::lastLowerDetail + 1> texts_;
  std::array<double, schema::lastLowerDetail + 1> heights_;
};

/// The height that the row at `position` takes against the next filled row below it, in inches: half the sum of both;
/// half its own height when none is below.
double calcTxtdown(const Shape& task, int position);
/// The same against the row at `previousPosition` above, less 0.02.
double calcTxtUp(const Shape& task, int position, int previousPosition);

}  // namespace quorvel::addin
