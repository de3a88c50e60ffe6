#include "report/output/html.h"

#include "base/text.h"
#include "report/output/presentation.h"

namespace quorvel::report {
namespace {

/// A page with more columns is printed across.
constexpr std::size_t mostUpright = 6;

constexpr std::string_view styles = R"(
:root { color-scheme: light; }
body { font: 15px/1.45 "Segoe UI", "Liberation Sans", Carlito, Arial, sans-serif; color: #1f2d3a; background: #fff;
  margin: 2rem auto; max-width: 78rem; padding: 0 1.5rem; }
h1 { font-size: 1.6rem; font-weight: 600; color: #2b5876; margin: 0 0 .2rem; }
p { margin: 0 0 .3rem; }
.about { color: #5a6b7a; font-size: .87rem; margin-bottom: 1.1rem; }
.wide { overflow-x: auto; }
table { border-collapse: collapse; min-width: 60%; }
th, td { padding: .38rem .7rem; text-align: left; vertical-align: top; border-bottom: 1px solid #dde4ea;
  white-space: pre-line; overflow-wrap: break-word; max-width: 30rem; }
thead th { background: #2b5876; color: #fff; font-weight: 600; vertical-align: bottom; border-bottom: 0; }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.across { text-align: center; max-width: 6.5rem; padding-left: .4rem; padding-right: .4rem; }
thead .upwards span { writing-mode: vertical-rl; transform: rotate(180deg); white-space: nowrap; }
.group th { background: #eaf2f8; color: #2b5876; font-weight: 600; border-top: 1px solid #b9cbd9; }
.inside-1 th:first-child { padding-left: 1.7rem; }
.inside-2 th:first-child { padding-left: 2.7rem; }
.group small { font-weight: 400; }
.total td { font-weight: 600; border-top: 1px solid #8ba5b8; background: #f6f9fb; }
.total.all td { border-top: 2px solid #2b5876; background: #fff; }
tbody .data:hover td { background: #f4f8fb; }
@page { margin: 14mm; }
@media print {
  body { margin: 0; padding: 0; max-width: none; font-size: 9.5pt; }
  .wide { overflow: visible; }
  table { width: 100%; }
  thead { display: table-header-group; }
  tr { break-inside: avoid; }
  .group { break-after: avoid; }
  thead th, .group th, .total td { -webkit-print-color-adjust: exact; print-color-adjust: exact; }
}
)";

std::string escaped(std::string_view text) {
  std::string html;
  for (const char each : text) {
    switch (each) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\r':
        break;
      default:
        html += each;
    }
  }
  return html;
}

class Page {
 public:
  explicit Page(const Table& table) : table_(table) {}

  std::string write() {
    html_ = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    html_ += "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" + escaped(table_.title) + "</title>\n";
    html_ += "<style>" + std::string(styles) + (isWide() ? "@page { size: landscape; }\n" : "") +
             "</style>\n</head>\n<body>\n<h1>" + escaped(table_.title) + "</h1>\n";
    if (!table_.description.empty()) html_ += "<p>" + escaped(table_.description) + "</p>\n";
    html_ += "<p class=\"about\">" + escaped(table_.drawing);
    if (!table_.page.empty()) html_ += " · page " + escaped(table_.page);
    html_ += " · " + std::to_string(table_.dataRows) + (table_.dataRows == 1 ? " row" : " rows") + "</p>\n";
    html_ += "<div class=\"wide\">\n<table>\n<thead>\n<tr>";
    const bool upwards = areTitlesTurned(table_);
    for (std::size_t i = table_.groupColumns; i < table_.columns.size(); ++i) {
      const bool turned = upwards && table_.columns[i].isAcross;
      html_ += "<th scope=\"col\"" + classOf(i, turned ? "upwards" : "") + "><span>" +
               escaped(table_.columns[i].title) + "</span></th>";
    }
    html_ += "</tr>\n</thead>\n<tbody>\n";
    for (std::size_t i = 0; i < table_.rows.size(); ++i) {
      if (table_.rows[i].kind == TableRow::Kind::Data) {
        addHeadings(table_.rows[i]);
        addData(table_.rows[i]);
      } else {
        addTotal(table_.rows[i]);
      }
    }
    html_ += "</tbody>\n</table>\n</div>\n</body>\n</html>\n";
    return std::move(html_);
  }

 private:
  std::string classOf(std::size_t column, std::string_view more = {}) const {
    std::string names = table_.columns[column].isNumeric ? "number" : table_.columns[column].isAcross ? "across" : "";
    if (!more.empty()) names += (names.empty() ? "" : " ") + std::string(more);
    return names.empty() ? names : " class=\"" + names + "\"";
  }

  bool isWide() const { return table_.columns.size() - table_.groupColumns > mostUpright; }

  /// A heading for each group that begins with this row.
  void addHeadings(const TableRow& row) {
    std::size_t level = 0;
    while (last_ && level < table_.groupColumns && equalIgnoringCase(last_->cells[level].text, row.cells[level].text))
      ++level;
    last_ = &row;
    for (; level < table_.groupColumns; ++level) {
      const std::string& group = row.cells[level].text;
      html_ += "<tr class=\"group inside-" + std::to_string(level) + "\"><th scope=\"rowgroup\" colspan=\"" +
               std::to_string(table_.columns.size() - table_.groupColumns) + "\"><small>" +
               escaped(table_.columns[level].title) + ":</small> " + (group.empty() ? "(none)" : escaped(group)) +
               "</th></tr>\n";
    }
  }

  void addData(const TableRow& row) {
    html_ += "<tr class=\"data\">";
    for (std::size_t i = table_.groupColumns; i < row.cells.size(); ++i)
      html_ += "<td" + classOf(i) + ">" + shown(row, i) + "</td>";
    html_ += "</tr>\n";
  }

  /// The label reaches to the first total, or is before it when that is in the first column.
  void addTotal(const TableRow& row) {
    std::size_t first = table_.groupColumns;
    while (first < row.cells.size() && table_.columns[first].total == TotalKind::None) ++first;
    const std::string label = row.kind == TableRow::Kind::GrandTotal ? std::string("Total") : groupOf(row) + " total";
    html_ += row.kind == TableRow::Kind::GrandTotal ? "<tr class=\"total all\">" : "<tr class=\"total\">";
    const std::size_t width = first - table_.groupColumns;
    if (width > 0) html_ += "<td colspan=\"" + std::to_string(width) + "\">" + escaped(label) + "</td>";
    for (std::size_t i = first; i < row.cells.size(); ++i) {
      html_ += "<td" + classOf(i) + ">" + (width == 0 && i == first ? escaped(label) + " – " : std::string());
      if (row.cells[i].number) html_ += labelOf(table_.columns[i].total);
      html_ += shown(row, i) + "</td>";
    }
    html_ += "</tr>\n";
  }

  std::string groupOf(const TableRow& row) const {
    const std::string& group = table_.rows[row.first].cells[row.level].text;
    return group.empty() ? "(none)" : group;
  }

  std::string shown(const TableRow& row, std::size_t column) const {
    const TableCell& cell = row.cells[column];
    return cell.number ? numberText(*cell.number, shownDecimals(table_.columns[column], row.kind)) : escaped(cell.text);
  }

  const Table& table_;
  const TableRow* last_ = nullptr;
  std::string html_;
};

}  // namespace

std::string htmlOf(const Table& table) { return Page(table).write(); }

}  // namespace quorvel::report
