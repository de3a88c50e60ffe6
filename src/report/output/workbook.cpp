#include "report/output/workbook.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "base/text.h"
#include "report/output/presentation.h"

namespace quorvel::report {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostRows = LXW_ROW_MAX - 1, mostColumns = LXW_COL_MAX, longestText = 32767, longestName = 31;
constexpr std::size_t narrowest = 5, widest = 48;
/// In points, as a workbook has them, and the characters of a turned title that are shown.
constexpr double lineHeight = LXW_DEF_ROW_HEIGHT, tallestRow = 400;
constexpr std::size_t mostTurned = 40;
constexpr lxw_color_t ink = 0x2B5876, groupFill = 0xF6F9FB;

/// A folder that is removed with the object; the library writes to files only.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::error_code error;
    std::string name = (fs::temp_directory_path(error) / "quorvel-report-XXXXXX").string();
    if (!error && mkdtemp(name.data())) path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code error;
    if (!path_.empty()) fs::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

/// At most so many UTF-16 units, in which a workbook counts.
std::string cut(std::string_view text, std::size_t most) {
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t before = at;
    units += decodeNext(text, at) > 0xFFFF ? 2 : 1;
    if (units > most) return std::string(text.substr(0, before));
  }
  return std::string(text);
}

std::string sheetName(const std::string& title) {
  std::string name;
  for (const char each : title) name += std::string_view("[]:*?/\\'").find(each) == std::string_view::npos ? each : ' ';
  name = std::string(trimmed(cut(trimmed(name), longestName)));
  return name.empty() || equalIgnoringCase(name, "History") ? "Report" : name;
}

/// The function number of SUBTOTAL.
int functionOf(TotalKind total) {
  switch (total) {
    case TotalKind::Mean:
      return 1;
    case TotalKind::Count:
      return 3;
    case TotalKind::Most:
      return 4;
    case TotalKind::Least:
      return 5;
    case TotalKind::Sum:
    case TotalKind::None:
      break;
  }
  return 9;
}

std::size_t longestLine(std::string_view text) {
  std::size_t longest = 0;
  for (const std::string_view line : splitAt(text, '\n')) longest = std::max(longest, lengthOf(line));
  return longest;
}

std::size_t longestWord(std::string_view text) {
  std::size_t longest = 0;
  for (const std::string_view word : splitAt(text, ' ')) longest = std::max(longest, longestLine(word));
  return longest;
}

/// How many lines a text has that is wrapped between words.
std::size_t linesOf(std::string_view text, std::size_t width) {
  std::size_t lines = 0;
  for (const std::string_view line : splitAt(text, '\n')) {
    std::size_t used = 0;
    ++lines;
    for (const std::string_view word : splitAt(line, ' ')) {
      const std::size_t length = lengthOf(word);
      if (used > 0 && used + 1 + length > width) {
        ++lines;
        used = 0;
      }
      used += (used > 0 ? 1 : 0) + length;
      lines += used > 0 ? (used - 1) / width : 0;
      used = used > 0 ? (used - 1) % width + 1 : 0;
    }
  }
  return lines;
}

class Sheet {
 public:
  Sheet(lxw_workbook* book, const Table& table) : book_(book), table_(table) {}

  void write() {
    sheet_ = workbook_add_worksheet(book_, sheetName(table_.title).c_str());
    setColumns();
    writeTitles();
    for (std::size_t i = 0; i < table_.rows.size(); ++i) writeRow(i);
    const bool hasGrandTotal = !table_.rows.empty() && table_.rows.back().kind == TableRow::Kind::GrandTotal;
    const std::size_t last = table_.rows.size() - (hasGrandTotal ? 1 : 0);
    const auto lastColumn = static_cast<lxw_col_t>(table_.columns.size() - 1);
    worksheet_autofilter(sheet_, 0, 0, static_cast<lxw_row_t>(last), lastColumn);
    worksheet_freeze_panes(sheet_, 1, 0);
    worksheet_repeat_rows(sheet_, 0, 0);
    worksheet_set_landscape(sheet_);
    worksheet_fit_to_pages(sheet_, 1, 0);
    // "&" begins a code in headers, and they hold 255 characters.
    worksheet_set_header(sheet_, ("&L&\"-,Bold\"" + cut(replaceAll(cut(table_.title, 60), "&", "&&"), 120)).c_str());
    worksheet_set_footer(sheet_, "&RPage &P of &N");
  }

 private:
  void writeTitles() {
    const bool turned = areTitlesTurned(table_);
    double height = lineHeight;
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      const TableColumn& column = table_.columns[i];
      const bool isTurned = turned && column.isAcross;
      const std::size_t length = std::min(longestLine(column.title), mostTurned);
      height = std::max(height, isTurned ? 5.5 * static_cast<double>(length) + 10 : heightOf(column.title, i));
      writeText(0, i, column.title, header(isTurned, column));
    }
    worksheet_set_row(sheet_, 0, std::min(height, tallestRow), nullptr);
  }

  /// Programs do not agree on who computes the heights of rows with wrapped texts, so the file has them.
  double heightOf(std::string_view text, std::size_t column) const {
    // A width counts digits, which are wider than most letters.
    return lineHeight * static_cast<double>(linesOf(text, widths_[column] * 11 / 10));
  }

  void setColumns() {
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      const TableColumn& column = table_.columns[i];
      // Titles across are wrapped between words, or turned.
      std::size_t width = column.isAcross ? longestWord(column.title) + 3 : longestLine(column.title) + 4;
      if (column.isAcross && areTitlesTurned(table_)) width = 4;
      for (const TableRow& row : table_.rows) width = std::max(width, longestLine(row.cells[i].text) + 2);
      width = column.width > 0 ? static_cast<std::size_t>(column.width) : std::clamp(width, narrowest, widest);
      worksheet_set_column(sheet_, static_cast<lxw_col_t>(i), static_cast<lxw_col_t>(i), static_cast<double>(width),
                           nullptr);
      widths_.push_back(width);
    }
  }

  void writeRow(std::size_t index) {
    const TableRow& row = table_.rows[index];
    const auto at = static_cast<lxw_row_t>(index + 1);
    const bool isData = row.kind == TableRow::Kind::Data;
    double height = lineHeight;
    for (std::size_t i = 0; isData && i < row.cells.size(); ++i) {
      const std::string& text = row.cells[i].text;
      if (text.size() > widths_[i] || text.find('\n') != std::string::npos)
        height = std::max(height, heightOf(text, i));
    }
    lxw_row_col_options outline{};
    if (row.kind != TableRow::Kind::GrandTotal)
      outline.level = static_cast<std::uint8_t>(isData ? table_.groupColumns : row.level);
    if (outline.level > 0 || height > lineHeight)
      worksheet_set_row_opt(sheet_, at, std::min(height, tallestRow), nullptr, &outline);
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      const TableCell& cell = row.cells[i];
      lxw_format* const format = formatOf(row.kind, i);
      const auto column = static_cast<lxw_col_t>(i);
      if (!isData && table_.columns[i].total != TotalKind::None) {
        writeTotal(row, at, i, format);
      } else if (cell.number) {
        worksheet_write_number(sheet_, at, column, *cell.number, format);
      } else if (!cell.text.empty()) {
        writeText(at, i, cell.text, format);
      } else if (!isData) {
        worksheet_write_blank(sheet_, at, column, format);
      }
    }
  }

  /// SUBTOTAL leaves out the totals that are inside its range.
  void writeTotal(const TableRow& row, lxw_row_t at, std::size_t index, lxw_format* format) {
    const auto column = static_cast<lxw_col_t>(index);
    std::array<char, LXW_MAX_CELL_RANGE_LENGTH> range{};
    lxw_rowcol_to_range(range.data(), static_cast<lxw_row_t>(row.first + 1), column, at - 1, column);
    const std::string formula =
        "=SUBTOTAL(" + std::to_string(functionOf(table_.columns[index].total)) + "," + range.data() + ")";
    if (!row.cells[index].number) {
      // A mean of nothing is an error in a workbook.
      worksheet_write_blank(sheet_, at, column, format);
    } else {
      worksheet_write_formula_num(sheet_, at, column, formula.c_str(), format, *row.cells[index].number);
    }
  }

  void writeText(lxw_row_t row, std::size_t column, const std::string& text, lxw_format* format) {
    worksheet_write_string(sheet_, row, static_cast<lxw_col_t>(column), cut(text, longestText).c_str(), format);
  }

  lxw_format* header(bool isTurned, const TableColumn& column) {
    const lxw_format_alignments align = column.isAcross    ? LXW_ALIGN_CENTER
                                        : column.isNumeric ? LXW_ALIGN_RIGHT
                                                           : LXW_ALIGN_LEFT;
    lxw_format*& format = headers_[{isTurned, align}];
    if (format) return format;
    format = workbook_add_format(book_);
    format_set_bold(format);
    format_set_font_color(format, LXW_COLOR_WHITE);
    format_set_bg_color(format, ink);
    format_set_text_wrap(format);
    format_set_align(format, LXW_ALIGN_VERTICAL_BOTTOM);
    format_set_align(format, align);
    if (align == LXW_ALIGN_RIGHT) format_set_indent(format, 1);
    if (isTurned) format_set_rotation(format, 90);
    return format;
  }

  /// Formats are shared by columns that look the same.
  lxw_format* formatOf(TableRow::Kind kind, std::size_t index) {
    const TableColumn& column = table_.columns[index];
    const bool isTotal = kind != TableRow::Kind::Data && column.total != TotalKind::None;
    const bool isNumber = column.isNumeric || isTotal;
    const Look look{kind, isNumber ? shownDecimals(column, kind) : -1, isTotal ? column.total : TotalKind::None,
                    column.isAcross, column.isNumeric};
    lxw_format*& format = formats_[look];
    if (format) return format;
    format = workbook_add_format(book_);
    format_set_align(format, LXW_ALIGN_VERTICAL_TOP);
    if (isNumber) {
      std::string digits = "0";
      if (look.decimals > 0) digits += "." + std::string(static_cast<std::size_t>(look.decimals), '0');
      const std::string label = isTotal ? labelOf(column.total) : "";
      format_set_num_format(format, ((label.empty() ? "" : "\"" + label + "\"") + digits).c_str());
    } else {
      format_set_text_wrap(format);
    }
    if (column.isAcross) {
      format_set_align(format, LXW_ALIGN_CENTER);
    } else {
      format_set_align(format, column.isNumeric ? LXW_ALIGN_RIGHT : LXW_ALIGN_LEFT);
      if (column.isNumeric) format_set_indent(format, 1);
    }
    if (kind != TableRow::Kind::Data) {
      format_set_bold(format);
      format_set_top(format, kind == TableRow::Kind::GrandTotal ? LXW_BORDER_MEDIUM : LXW_BORDER_THIN);
      format_set_border_color(format, ink);
      if (kind == TableRow::Kind::GroupTotal) format_set_bg_color(format, groupFill);
    }
    return format;
  }

  struct Look {
    TableRow::Kind kind;
    int decimals;
    TotalKind total;
    bool isAcross, isNumeric;
    friend auto operator<=>(const Look&, const Look&) = default;
  };

  lxw_workbook* book_;
  const Table& table_;
  lxw_worksheet* sheet_ = nullptr;
  std::vector<std::size_t> widths_;  ///< of the columns, in characters
  std::map<std::pair<bool, int>, lxw_format*> headers_;
  std::map<Look, lxw_format*> formats_;
};

}  // namespace

std::string workbookOf(const Table& table, std::string& problem) {
  if (table.rows.size() > mostRows || table.columns.size() > mostColumns) {
    problem = "cannot be written because the report has more rows or columns than a workbook holds; write it as .csv";
    return {};
  }
  const TemporaryFolder folder;
  const fs::path file = folder.path() / "report.xlsx";
  if (folder.path().empty()) {
    problem = "cannot be written because no temporary folder can be made";
    return {};
  }
  std::string temporary = folder.path().string();
  lxw_workbook_options options{};
  options.tmpdir = temporary.data();
  lxw_workbook* const book = workbook_new_opt(file.c_str(), &options);
  if (!book) {
    problem = "cannot be written because memory is short";
    return {};
  }
  Sheet(book, table).write();
  std::string title = cut(table.title, 255), description = cut(table.description, 255);
  lxw_doc_properties properties{};
  properties.title = title.data();
  properties.comments = description.data();
  workbook_set_properties(book, &properties);
  if (const lxw_error error = workbook_close(book); error != LXW_NO_ERROR) {
    problem = std::string("cannot be written (") + lxw_strerror(error) + ")";
    return {};
  }
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace quorvel::report
