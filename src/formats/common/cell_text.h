// Between a cell and the attributes that files write it with: value, unit, formula, error.
#pragma once

#include <string>
#include <string_view>

#include "formats/common/carried.h"
#include "host/cells/cell_table.h"

namespace quorvel::formats {

/// The attributes of a Cell element in a parsed part.
struct CellAttributes {
  bool hasValue = false, hasUnit = false, hasFormula = false, hasError = false;
  std::string_view value, unit, formula, error;
};

/// What the writer says about a cell. The texts are reused from cell to cell.
struct WrittenCell {
  std::string value, formula;
  std::string_view unit, error;  ///< empty: none
  bool hasFormula = false;
};

inline constexpr std::string_view noFormulaText = "No Formula";
inline constexpr std::string_view inheritedText = "Inh";

/// Reads a value in internal units.
host::Value readValue(const host::CellKey& key, const host::CellDefinition* definition, const CellAttributes& text);

/// Reads the whole cell. `formulaIsBroken` is set for a formula that does not parse; the cell then has only its value.
host::Cell readCell(const host::CellKey& key, const host::CellDefinition* definition, const CellAttributes& text,
                    host::FormulaPool& formulas, bool& formulaIsBroken);

/// The cell as the file writes it, to be carried. `formulaIsBroken` as readCell gave it.
CarriedCell carriedCell(host::Column column, const CellAttributes& text, bool formulaIsBroken);

/// True for a cell of which the file gives only the formula.
bool lacksValue(const CellAttributes& text, const host::Cell& cell);

void writeCell(const host::CellKey& key, const host::CellDefinition* definition, const host::Cell& cell,
               WrittenCell& written);

/// True when our writing of the cell gives exactly these attributes.
bool saysTheSame(const WrittenCell& written, const CellAttributes& text);

/// True when the cell is still what the carried text was read as.
bool stillReads(const CarriedCell& text, const host::CellKey& key, const host::CellDefinition* definition,
                const host::Cell& cell);

/// The shortest text of a number as files write it: point, no blanks, exponent only for the very small and very large.
void appendNumber(std::string& out, double number);

/// "2014-12-05T18:42:43" as days since 1899-12-30, and back. Fails for other text.
Maybe<double> parseDateText(std::string_view text);
std::string dateText(double days);

}  // namespace quorvel::formats
