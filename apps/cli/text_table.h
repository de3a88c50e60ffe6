// Rows of text in columns, for a terminal.
#pragma once

#include <string>
#include <vector>

namespace quorvel::cli {

struct Column {
  std::string title;
  std::size_t widest = 32;  ///< in characters; longer cells are wrapped between words
};

/// The table with a line of titles, each line indented. Columns that are empty in all rows are left out; an empty text
/// when there are no rows.
std::string tableText(const std::vector<Column>& columns, const std::vector<std::vector<std::string>>& rows,
                      std::size_t indent);

}  // namespace quorvel::cli
