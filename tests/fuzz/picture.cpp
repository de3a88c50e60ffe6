// Fuzzes format pictures: the input is a constant formula, a line end, and a picture.
#include "fuzz/check.h"
#include "host/formula/format_picture.h"
#include "host/formula/formula.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quorvel;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t lineEnd = input.find('\n');
  if (lineEnd == std::string_view::npos) return 0;
  const std::string_view text = input.substr(0, lineEnd), picture = input.substr(lineEnd + 1);
  const host::FormulaPtr formula = host::parseFormula(text);
  const host::Value value = formula && formula->constant() ? *formula->constant() : host::Value::text(text);
  const std::string shown = host::formatValue(value, picture);
  // Each place of a picture shows a number of at most 309 digits, a text or a name; it never multiplies.
  fuzz::check(shown.size() <= (picture.size() + 2) * (text.size() + 1000), "what is shown stays in proportion");
  host::fieldPicture(static_cast<int>(size) * 7 - 100);
  return 0;
}
