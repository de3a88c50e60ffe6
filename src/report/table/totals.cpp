#include "report/table/totals.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/text.h"

namespace quorvel::report {
namespace {

TableCell totalOf(const Table& table, std::size_t column, std::size_t first, std::size_t end) {
  double sum = 0, least = 0, most = 0;
  std::size_t numbers = 0, filled = 0;
  for (std::size_t i = first; i < end; ++i) {
    if (table.rows[i].kind != TableRow::Kind::Data) continue;
    const TableCell& cell = table.rows[i].cells[column];
    if (!cell.text.empty()) ++filled;
    if (!cell.number) continue;
    sum += *cell.number;
    least = numbers == 0 ? *cell.number : std::min(least, *cell.number);
    most = numbers == 0 ? *cell.number : std::max(most, *cell.number);
    ++numbers;
  }
  const auto shown = [](double number) { return TableCell{fixedNumber(number, 9), number}; };
  switch (table.columns[column].total) {
    case TotalKind::Count:
      return shown(static_cast<double>(filled));
    case TotalKind::Sum:
      return shown(sum);
    case TotalKind::Mean:
      return numbers == 0 ? TableCell() : shown(sum / static_cast<double>(numbers));
    case TotalKind::Least:
      return numbers == 0 ? TableCell() : shown(least);
    case TotalKind::Most:
      return numbers == 0 ? TableCell() : shown(most);
    case TotalKind::None:
      break;
  }
  return {};
}

class TotalRows {
 public:
  TotalRows(Table& table, bool ofGroups) : table_(table), levels_(ofGroups ? table.groupColumns : 0) {}

  void add(bool ofAll) {
    std::vector<TableRow> data = std::exchange(table_.rows, {});
    first_.assign(levels_, 0);
    for (std::size_t i = 0; i < data.size(); ++i) {
      if (i > 0) endGroups(sharedGroups(last_, data[i]));
      last_.cells.assign(data[i].cells.begin(),
                         data[i].cells.begin() + static_cast<std::ptrdiff_t>(table_.groupColumns));
      table_.rows.push_back(std::move(data[i]));
    }
    if (data.empty()) return;
    endGroups(0);
    if (ofAll) addRow(TableRow::Kind::GrandTotal, 0, 0, "Total");
  }

 private:
  std::size_t sharedGroups(const TableRow& a, const TableRow& b) const {
    std::size_t shared = 0;
    while (shared < levels_ && equalIgnoringCase(a.cells[shared].text, b.cells[shared].text)) ++shared;
    return shared;
  }

  /// Ends all groups but the outermost `kept`, the innermost first.
  void endGroups(std::size_t kept) {
    for (std::size_t level = levels_; level-- > kept;) {
      const std::string& group = last_.cells[level].text;
      addRow(TableRow::Kind::GroupTotal, level, first_[level], (group.empty() ? "(none)" : group) + " total");
      for (std::size_t i = level; i < levels_; ++i) first_[i] = table_.rows.size();
    }
  }

  void addRow(TableRow::Kind kind, std::size_t level, std::size_t first, const std::string& label) {
    TableRow row{kind, level, std::vector<TableCell>(table_.columns.size()), first};
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      if (table_.columns[i].total != TotalKind::None) row.cells[i] = totalOf(table_, i, first, table_.rows.size());
    }
    const std::size_t labelled = kind == TableRow::Kind::GroupTotal ? level : 0;
    if (table_.columns[labelled].total == TotalKind::None) row.cells[labelled].text = label;
    for (std::size_t i = 0; kind == TableRow::Kind::GroupTotal && i < level; ++i) row.cells[i] = last_.cells[i];
    table_.rows.push_back(std::move(row));
  }

  Table& table_;
  std::size_t levels_;
  std::vector<std::size_t> first_;  ///< by level: the row where the current group begins
  TableRow last_;                   ///< the groups of the row before
};

}  // namespace

const char* labelOf(TotalKind total) {
  switch (total) {
    case TotalKind::Count:
      return "Count: ";
    case TotalKind::Mean:
      return "Mean: ";
    case TotalKind::Least:
      return "Min: ";
    case TotalKind::Most:
      return "Max: ";
    case TotalKind::Sum:
    case TotalKind::None:
      break;
  }
  return "";
}

void addTotals(Table& table, bool ofGroups, bool ofAll) {
  const bool hasTotals =
      std::ranges::any_of(table.columns, [](const TableColumn& column) { return column.total != TotalKind::None; });
  if (hasTotals) TotalRows(table, ofGroups).add(ofAll);
}

}  // namespace quorvel::report
