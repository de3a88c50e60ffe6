// What a report definition says, read and checked.
#pragma once

#include <string>
#include <vector>

#include "base/maybe.h"
#include "host/cells/cell_key.h"
#include "schema/time_units.h"

namespace quorvel::report {

/// What a report has rows for.
enum class Subject { Tasks, Links, Connectors, Hyperlinks, Shapes };

/// The entries of a Task that may have a row each.
enum class Entry { Role, Guideline, Resource };

/// What a value is read from.
enum class Field {
  Cell,  ///< the row of shape data or of user-defined cells in ReportValue::cell
  Page,
  Id,  ///< a Task's ID, the ID that a connector shows, the label of what has a hyperlink; of other shapes the name
  Name,
  Kind,
  Description,
  From,
  To,
  TargetExists,
  SupportingRoles,
  Guidelines,
  Resources,
  Entry,
  EntryKind,
  EntryLetter,
};

enum class ValueFormat { Text, Number, Duration };

struct ReportValue {
  Field field = Field::Cell;
  host::CellKey cell;
  ValueFormat format = ValueFormat::Text;
  const schema::TimeUnit* unit = nullptr;  ///< of a duration, in which its number is given
};

enum class TotalKind { None, Count, Sum, Mean, Least, Most };

struct ColumnDefinition {
  std::string title;
  ReportValue value;
  TotalKind total = TotalKind::None;
  int width = 0;  ///< in characters; 0: as its texts need
};

/// A column for each different value. The rows of one shape become one row.
struct AcrossDefinition {
  ReportValue value;  ///< the titles of the columns
  ReportValue shown;  ///< what is in the cells
  TotalKind total = TotalKind::None;
};

enum class Comparison { Equal, NotEqual, Less, AtMost, More, AtLeast, Contains, BeginsWith, Empty, NotEmpty };

struct Condition {
  enum class Kind { All, Any, Compare };
  Kind kind = Kind::All;
  std::vector<Condition> parts;  ///< of All and Any
  ReportValue value;             ///< this and the following: of Compare
  Comparison comparison = Comparison::Equal;
  std::string text;
  double number = 0;  ///< for a value that is no text
};

struct GroupDefinition {
  std::string title;
  ReportValue value;
  bool descending = false;
};

struct SortDefinition {
  ReportValue value;
  bool descending = false;
};

struct Definition {
  std::string title, description;
  std::vector<Subject> subjects;
  std::vector<Entry> entries;  ///< empty: a row for each shape
  std::string page;            ///< empty: the whole drawing
  bool withBackgrounds = false;
  Condition filter;
  std::vector<ColumnDefinition> columns;
  Maybe<AcrossDefinition> across;
  std::vector<GroupDefinition> groups;
  std::vector<SortDefinition> sorting;
  bool groupTotals = true, grandTotal = true;
};

}  // namespace quorvel::report
