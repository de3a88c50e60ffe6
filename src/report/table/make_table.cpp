#include "report/table/make_table.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "base/text.h"
#include "report/table/filter.h"
#include "report/table/natural_order.h"
#include "report/table/records.h"
#include "report/table/totals.h"

namespace quorvel::report {
namespace {

constexpr std::size_t mostAcross = 300;
/// With how many decimals a number is shown at most.
constexpr int mostDecimals = 4;

struct NaturalOrder {
  bool operator()(const std::string& a, const std::string& b) const { return compareNaturally(a, b) < 0; }
};

/// A row with what it is sorted by.
struct Line {
  std::vector<TableCell> groups, keys, cells;
  /// What is in the columns across, by their titles.
  std::map<std::string, TableCell, NaturalOrder> across;
  const void* shape = nullptr;
};

/// Characters that no XML file can hold, and bytes that are no text, are replaced, so that each format can be written.
std::string cleaned(std::string text) {
  const auto isPlain = [](unsigned char byte) {
    return (byte >= ' ' && byte < 0x7F) || byte == '\n' || byte == '\t' || byte == '\r';
  };
  if (std::ranges::all_of(text, isPlain)) return text;
  std::string clean;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t next = decodeNext(text, at);
    const bool isControl = next < U' ' && next != U'\n' && next != U'\t' && next != U'\r';
    appendUtf8(clean, isControl || next == 0xFFFE || next == 0xFFFF ? char32_t{0xFFFD} : next);
  }
  return clean;
}

/// Cells without a value come last in both orders.
int compared(const TableCell& a, const TableCell& b, bool isNumeric, bool descending) {
  const auto isMissing = [&](const TableCell& cell) { return isNumeric ? !cell.number : cell.text.empty(); };
  if (isMissing(a) || isMissing(b)) return int(isMissing(a)) - int(isMissing(b));
  const int order = isNumeric ? (*a.number < *b.number   ? -1
                                 : *a.number > *b.number ? 1
                                                         : 0)
                              : compareNaturally(a.text, b.text);
  return descending ? -order : order;
}

bool isNumeric(const ReportValue& value) { return value.format != ValueFormat::Text; }

int decimalsOf(double number, int most) {
  const std::string text = fixedNumber(number, most);
  const std::size_t point = text.find('.');
  return point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1);
}

class TableMaker {
 public:
  TableMaker(const host::Store& store, host::DocumentId document, const Definition& definition)
      : definition_(definition), reader_(store, document) {}

  MadeTable make(const std::string& onlyPage) {
    const std::string& page = onlyPage.empty() ? definition_.page : onlyPage;
    if (!page.empty() && !reader_.hasPage(page)) return {{}, "The drawing has no page \"" + page + "\"."};
    readLines(onlyPage);
    sortLines();
    if (const std::size_t count = acrossTitles().size(); count > mostAcross)
      return {{},
              "The report would have " + std::to_string(count) + " columns across, more than " +
                  std::to_string(mostAcross) + "; filter its rows."};
    MadeTable made;
    made.table.title = cleaned(definition_.title);
    made.table.description = cleaned(definition_.description);
    made.table.page = cleaned(page);
    fill(made.table);
    addTotals(made.table, definition_.groupTotals, definition_.grandTotal);
    return made;
  }

 private:
  TableCell cell(const Record& record, const ReportValue& value) const {
    TableCell cell = reader_.value(record, value);
    cell.text = cleaned(std::move(cell.text));
    return cell;
  }

  void readLines(const std::string& onlyPage) {
    for (const Record& record : reader_.records(definition_, onlyPage)) {
      const auto read = [&](const ReportValue& value) { return cell(record, value); };
      if (!passes(definition_.filter, read)) continue;
      // Records of one shape follow each other.
      const bool isSameShape =
          definition_.across && record.task && !lines_.empty() && lines_.back().shape == record.task;
      if (!isSameShape) {
        Line& line = lines_.emplace_back();
        line.shape = record.task;
        for (const GroupDefinition& group : definition_.groups) line.groups.push_back(read(group.value));
        for (const SortDefinition& key : definition_.sorting) line.keys.push_back(read(key.value));
        for (const ColumnDefinition& column : definition_.columns) line.cells.push_back(read(column.value));
      }
      if (!definition_.across) continue;
      const std::string title = read(definition_.across->value).text;
      if (!title.empty()) addTo(lines_.back().across[title], read(definition_.across->shown));
    }
  }

  /// Numbers of one cell are added, texts are listed.
  static void addTo(TableCell& cell, const TableCell& other) {
    if (cell.number && other.number) {
      cell.number = *cell.number + *other.number;
      cell.text = fixedNumber(*cell.number, 9);
    } else if (cell.text.empty()) {
      cell = other;
    } else if (cell.text != other.text && !other.text.empty()) {
      cell.text += "/" + other.text;
    }
  }

  void sortLines() {
    std::ranges::stable_sort(lines_, [&](const Line& a, const Line& b) {
      for (std::size_t i = 0; i < definition_.groups.size(); ++i) {
        const GroupDefinition& group = definition_.groups[i];
        if (const int order = compared(a.groups[i], b.groups[i], isNumeric(group.value), group.descending); order != 0)
          return order < 0;
      }
      for (std::size_t i = 0; i < definition_.sorting.size(); ++i) {
        const SortDefinition& key = definition_.sorting[i];
        if (const int order = compared(a.keys[i], b.keys[i], isNumeric(key.value), key.descending); order != 0)
          return order < 0;
      }
      return false;
    });
  }

  std::set<std::string, NaturalOrder> acrossTitles() const {
    std::set<std::string, NaturalOrder> titles;
    for (const Line& line : lines_) {
      for (const auto& [title, shown] : line.across) titles.insert(title);
    }
    return titles;
  }

  void fill(Table& table) {
    const auto addColumn = [&](const std::string& title, const ReportValue& value, TotalKind total) -> TableColumn& {
      TableColumn& column = table.columns.emplace_back();
      column.title = cleaned(title);
      column.isNumeric = isNumeric(value);
      column.decimals = value.unit ? value.unit->decimals() : mostDecimals;
      column.total = total;
      return column;
    };
    table.groupColumns = definition_.groups.size();
    for (const GroupDefinition& group : definition_.groups) addColumn(group.title, group.value, TotalKind::None);
    for (const ColumnDefinition& column : definition_.columns)
      addColumn(column.title, column.value, column.total).width = column.width;
    const std::set<std::string, NaturalOrder> titles = acrossTitles();
    for (const std::string& title : titles)
      addColumn(title, definition_.across->shown, definition_.across->total).isAcross = true;

    table.dataRows = lines_.size();
    for (Line& line : lines_) {
      TableRow& row = table.rows.emplace_back();
      row.cells = std::move(line.groups);
      std::ranges::move(line.cells, std::back_inserter(row.cells));
      for (const std::string& title : titles) {
        const auto found = line.across.find(title);
        row.cells.push_back(found == line.across.end() ? TableCell() : std::move(found->second));
      }
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      TableColumn& column = table.columns[i];
      const int most = std::exchange(column.decimals, 0);
      for (const TableRow& row : table.rows) {
        if (row.cells[i].number) column.decimals = std::max(column.decimals, decimalsOf(*row.cells[i].number, most));
      }
    }
  }

  const Definition& definition_;
  RecordReader reader_;
  std::vector<Line> lines_;
};

}  // namespace

MadeTable makeTable(const host::Store& store, host::DocumentId document, const Definition& definition,
                    const TableOptions& options) {
  MadeTable made = TableMaker(store, document, definition).make(options.page);
  made.table.drawing = cleaned(store.document(document)->name);
  return made;
}

}  // namespace quorvel::report
