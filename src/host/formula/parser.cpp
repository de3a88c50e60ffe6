// Reads formula text into a tree. Hostile text costs a bounded depth and gives no formula.
#include <algorithm>
#include <array>

#include "base/text.h"
#include "host/cells/cell_name.h"
#include "host/formula/evaluator.h"
#include "host/formula/formula.h"
#include "host/formula/formula_node.h"
#include "host/formula/functions.h"
#include "host/formula/number_text.h"
#include "host/formula/operators.h"

namespace quorvel::host {
namespace {

/// Brackets within brackets, and the height of the tree that evaluation walks down.
constexpr int nestingLimit = 200;
constexpr int heightLimit = 1500;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool isWordStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool isWordPart(char c) { return isWordStart(c) || isDigit(c) || c == '.'; }

bool equalWord(std::string_view word, std::string_view capitals) {
  return std::equal(word.begin(), word.end(), capitals.begin(), capitals.end(),
                    [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 32 : a) == b; });
}

/// "5" of "Sheet.5" or of "Executive.5": the place of its digits and their number.
struct TrailingId {
  std::size_t position = std::string_view::npos;
  int id = 0;
};

TrailingId trailingId(std::string_view name) {
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos || dot + 1 == name.size() || name.size() - dot > 10) return {};
  int id = 0;
  for (const char c : name.substr(dot + 1)) {
    if (!isDigit(c)) return {};
    id = id * 10 + (c - '0');
  }
  return {dot + 1, id};
}

}  // namespace

class FormulaParser {
 public:
  FormulaPtr parse(std::string_view text);

 private:
  /// A subtree: its root and how high it is. No root is a failure, which ends parsing.
  struct Tree {
    std::uint32_t root = 0;
    int height = 0;
    explicit operator bool() const { return height > 0; }
  };

  /// A word or a quoted name before "!", with its place in the source.
  struct NamePart {
    std::string text;
    std::size_t position = 0, end = 0;  ///< with its quotation marks
    bool quoted = false;
  };

  Tree expression(int precedence);
  Tree operand();
  Tree primary();
  Tree number();
  Tree implicitNumber(double value);
  Tree quotedText();
  Tree errorConstant();
  Tree word();
  Tree call(std::string_view name);
  Tree reference(std::vector<NamePart> parts, ReferenceScope scope, std::string container);
  Tree inContainer(ReferenceScope scope);

  bool readUnit(Unit& unit);
  Maybe<std::string> quotedName();
  Maybe<NamePart> namePart();
  void placeSheet(Reference& reference, const NamePart& part, bool ownPage);

  const BinaryOperator* operatorAhead(std::size_t& length);
  void skipBlanks() {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
  }
  bool ahead(char c) {
    skipBlanks();
    return at_ < text_.size() && text_[at_] == c;
  }
  bool take(char c) {
    if (!ahead(c)) return false;
    ++at_;
    return true;
  }
  bool takeSeparator() { return take(',') || take(';'); }
  std::string_view readWord();

  /// What is computed from a number in the page's units may be something else on another page.
  bool hangsOnPage() const {
    if (formula_->nodes_.size() == 1) return false;
    return std::any_of(formula_->constants_.begin(), formula_->constants_.end(), [](const Value& value) {
      return value.kind() == ValueKind::Number && (value.unit() == Unit::Drawing || value.unit() == Unit::Page);
    });
  }

  Tree add(const FormulaNode& node, int height) {
    if (height > heightLimit) return {};
    formula_->nodes_.push_back(node);
    return {static_cast<std::uint32_t>(formula_->nodes_.size() - 1), height};
  }
  Tree constant(Value value) {
    formula_->constants_.push_back(std::move(value));
    return add({NodeKind::Constant, 0, 0, static_cast<std::uint32_t>(formula_->constants_.size() - 1), 0}, 1);
  }

  Formula* formula_ = nullptr;
  std::string_view text_;
  std::size_t at_ = 0;
  int nesting_ = 0;
  bool watching_ = true;
  bool pure_ = true;
};

FormulaPtr FormulaParser::parse(std::string_view text) {
  text = trimmed(text);
  if (!text.empty() && text[0] == '=') text = trimmed(text.substr(1));
  // Texts of this length are no formulas that anyone wrote.
  if (text.empty() || text.size() > 1'000'000) return nullptr;
  const std::shared_ptr<Formula> formula(new Formula);
  formula->text_ = text;
  formula_ = formula.get();
  text_ = formula->text_;
  if (!expression(1)) return nullptr;
  skipBlanks();
  if (at_ != text_.size()) return nullptr;
  formula->nodes_.shrink_to_fit();
  formula->constants_.shrink_to_fit();
  if (pure_ && formula->known_ && formula->references_.empty() && !hangsOnPage())
    formula->constant_ = evaluatePure(*formula);
  return formula;
}

const BinaryOperator* FormulaParser::operatorAhead(std::size_t& length) {
  skipBlanks();
  if (at_ >= text_.size()) return nullptr;
  const std::string_view rest = text_.substr(at_);
  const bool word = isWordStart(rest[0]);
  std::size_t wordEnd = 0;
  while (word && wordEnd < rest.size() && isWordPart(rest[wordEnd])) ++wordEnd;
  for (const BinaryOperator& known : binaryOperators()) {
    const bool matches = word ? equalWord(rest.substr(0, wordEnd), known.sign) : rest.starts_with(known.sign);
    if (!matches) continue;
    length = known.sign.size();
    return &known;
  }
  return nullptr;
}

FormulaParser::Tree FormulaParser::expression(int precedence) {
  if (++nesting_ > nestingLimit) return {};
  Tree left = operand();
  while (left) {
    std::size_t length = 0;
    const BinaryOperator* found = operatorAhead(length);
    if (!found || found->precedence < precedence) break;
    at_ += length;
    const Tree right = expression(found->precedence + 1);
    if (!right) return {};
    const auto row = static_cast<std::uint8_t>(found - binaryOperators().data());
    left = add({NodeKind::Binary, row, 0, left.root, right.root}, std::max(left.height, right.height) + 1);
  }
  --nesting_;
  return left;
}

FormulaParser::Tree FormulaParser::operand() {
  // Signs are gathered first: a row of a thousand of them must not be a thousand calls deep.
  bool negative = false;
  bool any = false;
  while (ahead('-') || ahead('+')) {
    negative ^= text_[at_++] == '-';
    any = true;
  }
  Tree tree = primary();
  while (tree && take('%')) tree = add({NodeKind::Unary, 2, 0, tree.root, 0}, tree.height + 1);
  if (tree && any) {
    FormulaNode& node = formula_->nodes_[tree.root];
    // A signed number is one constant.
    if (node.kind == NodeKind::Constant && formula_->constants_[node.first].kind() == ValueKind::Number) {
      Value& value = formula_->constants_[node.first];
      if (negative) value = Value::number(-value.internal(), value.unit());
    } else {
      const std::uint8_t row = negative ? 0 : 1;
      tree = add({NodeKind::Unary, row, 0, tree.root, 0}, tree.height + 1);
    }
  }
  return tree;
}

FormulaParser::Tree FormulaParser::primary() {
  skipBlanks();
  if (at_ >= text_.size()) return {};
  const char c = text_[at_];
  if (c == '(') {
    ++at_;
    const Tree inner = expression(1);
    return inner && take(')') ? inner : Tree();
  }
  if (c == '"') return quotedText();
  if (c == '#') return errorConstant();
  if (isDigit(c) || c == '.') return number();
  if (c == '\'') {
    Maybe<NamePart> part = namePart();
    if (!part || !take('!')) return {};
    std::vector<NamePart> parts;
    parts.push_back(*part);
    return reference(std::move(parts), ReferenceScope::ThisSheet, {});
  }
  return isWordStart(c) ? word() : Tree();
}

bool FormulaParser::readUnit(Unit& unit) {
  unit = Unit::None;
  const std::size_t before = at_;
  skipBlanks();
  if (at_ < text_.size() && text_[at_] == '%') {
    ++at_;
    unit = Unit::Percent;
    return true;
  }
  std::size_t end = at_;
  while (end < text_.size() && isWordStart(text_[end])) ++end;
  if (end == at_) {
    at_ = before;
    return true;
  }
  std::size_t length = 0;
  if (operatorAhead(length)) return true;
  const Maybe<Unit> known = unitOfSuffix(text_.substr(at_, end - at_));
  if (!known) return false;
  unit = *known;
  at_ = end;
  // "5 em." ends in a point of its own; "5 in.5" is nothing.
  if (at_ < text_.size() && text_[at_] == '.') ++at_;
  return at_ >= text_.size() || !isDigit(text_[at_]);
}

FormulaParser::Tree FormulaParser::number() {
  const auto read = [&](double& value) {
    const std::size_t length = numberLength(text_.substr(at_));
    value = numberOf(text_.substr(at_, length));
    at_ += length;
    return length > 0;
  };
  double value = 0;
  if (!read(value)) return {};
  if (at_ < text_.size() && isBlank(text_[at_])) {
    // "5 1/2": two numbers side by side have no other meaning.
    const std::size_t before = at_;
    skipBlanks();
    double above = 0, below = 0;
    if (at_ < text_.size() && isDigit(text_[at_])) {
      if (!read(above) || !take('/')) return {};
      skipBlanks();
      if (!read(below) || below == 0) return {};
      value += above / below;
    } else {
      at_ = before;
    }
  }
  if (ahead('[')) return implicitNumber(value);
  Unit unit;
  if (!readUnit(unit)) return {};
  double internal = toInternalOfSuffix(value, unit);
  while (unit != Unit::None && (skipBlanks(), at_ < text_.size() && isDigit(text_[at_]))) {
    // "2 ft 3 in"
    Unit smaller;
    if (!read(value) || !readUnit(smaller)) return {};
    if (dimensionOf(smaller) != dimensionOf(unit) || internalPer(smaller) >= internalPer(unit)) return {};
    internal += toInternalOfSuffix(value, smaller);
    unit = compoundUnit(unit, smaller);
  }
  if (!isRepresentable(internal)) return {};
  if (unit == Unit::Date) return constant(Value::date(internal));
  return constant(Value::number(internal, unit));
}

/// "5[in,D]": five inches, shown in the drawing's own unit.
FormulaParser::Tree FormulaParser::implicitNumber(double value) {
  take('[');
  Unit unit;
  if (!readUnit(unit) || unit == Unit::None || !take(',')) return {};
  skipBlanks();
  if (at_ >= text_.size()) return {};
  Unit shown;
  switch (text_[at_++] | 0x20) {
    case 'a':
      shown = Unit::Angle;
      break;
    case 'd':
      shown = Unit::Drawing;
      break;
    case 'e':
      shown = Unit::Duration;
      break;
    case 'p':
      shown = Unit::Page;
      break;
    case 't':
      shown = Unit::Typographic;
      break;
    default:
      return {};
  }
  const double internal = toInternalOfSuffix(value, unit);
  if (!take(']') || !isRepresentable(internal)) return {};
  return constant(Value::number(internal, shown));
}

FormulaParser::Tree FormulaParser::quotedText() {
  std::string value;
  for (++at_; at_ < text_.size(); ++at_) {
    if (text_[at_] == '"') {
      if (at_ + 1 >= text_.size() || text_[at_ + 1] != '"') {
        ++at_;
        return constant(Value::text(value));
      }
      ++at_;
    }
    value += text_[at_];
  }
  return {};
}

FormulaParser::Tree FormulaParser::errorConstant() {
  std::size_t end = at_ + 1;
  while (end < text_.size() && (isWordStart(text_[end]) || isDigit(text_[end]) || text_[end] == '/')) ++end;
  if (end < text_.size() && (text_[end] == '!' || text_[end] == '?')) ++end;
  const ErrorCode code = errorOfText(text_.substr(at_, end - at_));
  if (code == ErrorCode::None) return {};
  at_ = end;
  return constant(Value::error(code));
}

std::string_view FormulaParser::readWord() {
  std::size_t end = at_;
  while (end < text_.size() && isWordPart(text_[end])) ++end;
  const std::string_view word = text_.substr(at_, end - at_);
  at_ = end;
  return word;
}

Maybe<std::string> FormulaParser::quotedName() {
  std::string name;
  for (++at_; at_ < text_.size(); ++at_) {
    if (text_[at_] == '\'') {
      if (at_ + 1 >= text_.size() || text_[at_ + 1] != '\'') {
        ++at_;
        return name;
      }
      ++at_;
    }
    name += text_[at_];
  }
  return {};
}

Maybe<FormulaParser::NamePart> FormulaParser::namePart() {
  skipBlanks();
  NamePart part;
  part.position = at_;
  if (at_ < text_.size() && text_[at_] == '\'') {
    const Maybe<std::string> name = quotedName();
    if (!name) return {};
    part.text = *name;
    part.quoted = true;
    part.end = at_;
    return part;
  }
  if (at_ >= text_.size() || !isWordStart(text_[at_])) return {};
  part.text = readWord();
  part.end = at_;
  return part;
}

FormulaParser::Tree FormulaParser::word() {
  const std::size_t from = at_;
  const std::string_view name = readWord();
  if (ahead('(')) return call(name);
  if (equalWord(name, "TRUE")) return constant(Value::boolean(true));
  if (equalWord(name, "FALSE")) return constant(Value::boolean(false));
  if (ahead('[')) {
    if (equalWord(name, "PAGES")) return inContainer(ReferenceScope::Page);
    if (equalWord(name, "MASTERS")) return inContainer(ReferenceScope::Master);
  }
  std::vector<NamePart> parts;
  ReferenceScope scope = ReferenceScope::ThisSheet;
  if (ahead('!')) {
    ++at_;
    if (equalWord(name, "STYLES")) {
      scope = ReferenceScope::Style;
      const Maybe<NamePart> style = namePart();
      if (!style || !take('!')) return {};
      parts.push_back(*style);
    } else {
      parts.push_back({std::string(name), from, from + name.size(), false});
    }
  } else {
    at_ = from;
  }
  return reference(std::move(parts), scope, {});
}

/// "Pages[Page-1]!" and "Masters[Gear]!", up to the sheet inside.
FormulaParser::Tree FormulaParser::inContainer(ReferenceScope scope) {
  take('[');
  std::string name;
  if (ahead('\'')) {
    const Maybe<std::string> quoted = quotedName();
    if (!quoted || !take(']')) return {};
    name = *quoted;
  } else {
    const auto end = text_.find(']', at_);
    if (end == std::string_view::npos) return {};
    name = trimmed(text_.substr(at_, end - at_));
    at_ = end + 1;
  }
  if (!take('!')) return {};
  std::vector<NamePart> parts;
  const std::size_t before = at_;
  const Maybe<NamePart> inner = namePart();
  if (inner && take('!')) {
    parts.push_back(*inner);
  } else {
    at_ = before;
  }
  return reference(std::move(parts), scope, std::move(name));
}

void FormulaParser::placeSheet(Reference& reference, const NamePart& part, bool ownPage) {
  const std::string_view name = part.text;
  if (!part.quoted && equalWord(name, "THEPAGE")) {
    if (ownPage) reference.scope = ReferenceScope::ThePage;
    return;
  }
  if (!part.quoted && ownPage && equalWord(name, "THEDOC")) {
    reference.scope = ReferenceScope::TheDocument;
    return;
  }
  const TrailingId id = trailingId(name);
  const bool numbered = id.position != std::string_view::npos;
  const std::string_view base = numbered ? name.substr(0, id.position - 1) : name;
  const bool plainSheet = numbered && equalWord(base, "SHEET");
  if (numbered) reference.shapeId = id.id;
  if (!ownPage) {
    if (!plainSheet) reference.innerName = name;
    return;
  }
  reference.scope = plainSheet ? ReferenceScope::Shape : ReferenceScope::NamedShape;
  std::size_t from = part.position, to = part.end;
  if (plainSheet) {
    from += id.position + (part.quoted ? 1 : 0);
    to -= part.quoted ? 1 : 0;
  } else {
    reference.name = name;
  }
  reference.idPosition = static_cast<std::uint32_t>(from);
  reference.idLength = static_cast<std::uint32_t>(to - from);
}

FormulaParser::Tree FormulaParser::reference(std::vector<NamePart> parts, ReferenceScope scope, std::string container) {
  Reference reference;
  reference.scope = scope;
  reference.watched = watching_;
  if (scope == ReferenceScope::Style) {
    reference.name = parts.front().text;
  } else {
    const bool ownPage = scope == ReferenceScope::ThisSheet;
    reference.name = std::move(container);
    if (!parts.empty()) placeSheet(reference, parts.front(), ownPage);
  }
  skipBlanks();
  const std::size_t from = at_;
  if (at_ >= text_.size() || !isWordStart(text_[at_])) return {};
  const std::string_view name = readWord();
  std::size_t end = at_;
  if (ahead('(')) {
    // "Sheet.5!SHEETREF()" means the sheet as a whole.
    ++at_;
    if (!equalWord(name, "SHEETREF") || !take(')')) return {};
    end = at_;
  } else if (at_ < text_.size() && text_[at_] == '[') {
    const auto close = text_.find(']', at_);
    if (close == std::string_view::npos) return {};
    end = at_ = close + 1;
  }
  reference.cellText = text_.substr(from, end - from);
  reference.cell = parseCellName(reference.cellText).or_(CellKey());
  formula_->references_.push_back(std::move(reference));
  return add({NodeKind::Reference, 0, 0, static_cast<std::uint32_t>(formula_->references_.size() - 1), 0}, 1);
}

FormulaParser::Tree FormulaParser::call(std::string_view name) {
  const int found = findFunction(name);
  const std::uint16_t traits = found < 0 ? std::uint16_t(AsksHost) : allFunctions()[std::size_t(found)].traits;
  const bool watchingOutside = watching_;
  take('(');
  std::vector<std::uint32_t> arguments;
  int height = 0;
  if (!take(')')) {
    do {
      const bool unwatched =
          (traits & FirstUnwatched && arguments.empty()) || (traits & SecondUnwatched && arguments.size() == 1);
      watching_ = watchingOutside && !unwatched;
      const bool empty = ahead(',') || ahead(';') || ahead(')');
      const Tree argument = empty ? add({}, 1) : expression(1);
      if (!argument) return {};
      arguments.push_back(argument.root);
      height = std::max(height, argument.height);
    } while (takeSeparator());
    if (!take(')')) return {};
  }
  if (traits & TakesCell && take('!')) {
    watching_ = false;
    const Tree cell = reference({}, ReferenceScope::ThisSheet, {});
    if (!cell) return {};
    arguments.push_back(cell.root);
  }
  watching_ = watchingOutside;
  if (traits & AsksHost) pure_ = false;
  if (traits & Changes) formula_->volatile_ = true;
  if (traits & ReadsText) formula_->readsText_ = true;
  if (traits & ReadsTransforms) formula_->readsTransforms_ = true;
  if (traits & ReadsRelations) formula_->readsRelations_ = true;
  if (traits & Guards) formula_->guarded_ = true;
  const auto place = static_cast<std::uint32_t>(formula_->arguments_.size());
  const auto count = static_cast<std::uint32_t>(arguments.size());
  formula_->arguments_.insert(formula_->arguments_.end(), arguments.begin(), arguments.end());
  if (found < 0 && equalWord(name, "SHEETREF")) {
    // The sheet itself; in front of a cell it changes nothing, alone it is a mark for other functions.
    return take('!') ? reference({}, ReferenceScope::ThisSheet, {}) : constant(Value());
  }
  if (found >= 0) return add({NodeKind::Call, 0, static_cast<std::uint16_t>(found), place, count}, height + 1);
  formula_->known_ = false;
  const Tree unknown = add({NodeKind::UnknownCall, 0, 0, place, count}, height + 1);
  // "CONTAINERSHEETREF(1)!Height": whatever cell that is, its sheet is one that we cannot find.
  if (unknown && take('!')) {
    skipBlanks();
    if (at_ >= text_.size() || !isWordStart(text_[at_])) return {};
    readWord();
    if (at_ < text_.size() && text_[at_] == '[') {
      const auto end = text_.find(']', at_);
      if (end == std::string_view::npos) return {};
      at_ = end + 1;
    }
  }
  return unknown;
}

FormulaPtr parseFormula(std::string_view text) { return FormulaParser().parse(text); }

}  // namespace quorvel::host
