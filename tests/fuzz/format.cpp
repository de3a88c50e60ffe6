// Fuzzes formats: the input is a constant formula, a line end, and a format.
#include "fuzz/check.h"
#include "host/formula/formula.h"
#include "host/formula/value_format.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quorvel;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t lineEnd = input.find('\n');
  if (lineEnd == std::string_view::npos) return 0;
  const std::string_view text = input.substr(0, lineEnd), format = input.substr(lineEnd + 1);
  const host::FormulaPtr formula = host::parseFormula(text);
  const host::Value value = formula && formula->constant() ? *formula->constant() : host::Value::text(text);
  const std::string shown = host::formatValue(value, format);
  // Each place of a format shows a number of at most 309 digits, a text or a name; it never multiplies.
  fuzz::check(shown.size() <= (format.size() + 2) * (text.size() + 1000), "what is shown stays in proportion");
  host::fieldFormat(static_cast<int>(size) * 7 - 100);
  return 0;
}
