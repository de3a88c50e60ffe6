#include "cli/text_table.h"

#include <algorithm>

#include "base/text.h"

namespace quorvel::cli {
namespace {

constexpr std::size_t gap = 2;

/// Line ends become blanks, so that a cell never breaks the table.
std::vector<std::string> wrapped(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  std::string line;
  std::string oneLine = text;
  std::ranges::replace_if(
      oneLine, [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  for (const std::string_view word : splitAt(oneLine, ' ')) {
    if (word.empty()) continue;
    if (!line.empty() && lengthOf(line) + 1 + lengthOf(word) > width) {
      lines.push_back(line);
      line.clear();
    }
    line += line.empty() ? std::string(word) : " " + std::string(word);
  }
  if (!line.empty() || lines.empty()) lines.push_back(line);
  return lines;
}

void appendPadded(std::string& text, const std::string& piece, std::size_t width) {
  text += piece;
  text.append(width + gap - std::min(width + gap, lengthOf(piece)), ' ');
}

void appendLine(std::string& out, std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  out += line + '\n';
}

}  // namespace

std::string tableText(const std::vector<Column>& columns, const std::vector<std::vector<std::string>>& rows,
                      std::size_t indent) {
  if (rows.empty()) return {};
  std::vector<std::vector<std::vector<std::string>>> cells;  // by row and column, in lines
  std::vector<std::size_t> widths(columns.size(), 0);
  for (const auto& row : rows) {
    auto& lines = cells.emplace_back();
    for (std::size_t c = 0; c < columns.size(); ++c) {
      lines.push_back(wrapped(row[c], columns[c].widest));
      for (const std::string& line : lines.back()) widths[c] = std::max(widths[c], lengthOf(line));
    }
  }
  const std::vector<bool> shown = [&] {
    std::vector<bool> filled;
    for (const std::size_t width : widths) filled.push_back(width > 0);
    return filled;
  }();
  std::string text;
  std::string titles(indent, ' ');
  for (std::size_t c = 0; c < columns.size(); ++c) {
    widths[c] = std::max(widths[c], lengthOf(columns[c].title));
    if (shown[c]) appendPadded(titles, columns[c].title, widths[c]);
  }
  appendLine(text, titles);
  for (const auto& row : cells) {
    std::size_t height = 0;
    for (const auto& lines : row) height = std::max(height, lines.size());
    for (std::size_t n = 0; n < height; ++n) {
      std::string line(indent, ' ');
      for (std::size_t c = 0; c < columns.size(); ++c) {
        if (shown[c]) appendPadded(line, n < row[c].size() ? row[c][n] : std::string(), widths[c]);
      }
      appendLine(text, line);
    }
  }
  return text;
}

}  // namespace quorvel::cli
