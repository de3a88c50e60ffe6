// A parsed formula: immutable, shared by all cells with the same text, kept as written.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/maybe.h"
#include "host/cells/cell_key.h"
#include "host/formula/value.h"
#include "host/geometry/point.h"

namespace quorvel::host {

/// Which sheet a reference means.
enum class ReferenceScope : std::uint8_t {
  ThisSheet,
  Shape,       ///< Sheet.5!
  NamedShape,  ///< Name! or Name.5!
  ThePage,
  TheDocument,
  Page,    ///< Pages[Page-1]! with or without a shape behind it
  Style,   ///< Styles!Name!
  Master,  ///< Masters[Name]!
};

struct Reference {
  ReferenceScope scope = ReferenceScope::ThisSheet;
  /// Of a Shape, also behind a page or a master (0: the page's sheet). With a name: the number at its end, which may be
  /// part of the name ("Box.2") or the ID of a shape that is only called "Box"; 0 for none.
  int shapeId = 0;
  std::string name;       ///< shape, page, style or master name, as written
  std::string innerName;  ///< shape's name behind a page or a master: "Shaft" in Masters[Gear]!Shaft!Width
  CellKey cell;           ///< null when the cell name could not be read: a reference to nothing
  std::string cellText;   ///< the cell name as written
  /// Read but not watched: what SETATREF and its like write to, and where a dependency would be a circle by design.
  bool watched = true;
  /// The place of a Shape's number or a NamedShape's name in the source, for rewriting it in a copy; length 0 when
  /// there is none.
  std::uint32_t idPosition = 0, idLength = 0;
};

/// How far two points of coordinate systems are apart, and the like, is asked of the context by number.
enum class Transform : std::uint8_t { LocalToPage, PageToLocal };

struct TextMetricsRequest {
  bool height = false;               ///< TEXTHEIGHT, else TEXTWIDTH
  double maxWidth = -1;              ///< inches; negative: no wrapping
  const Reference* shape = nullptr;  ///< another shape's TheText cell; null for this shape
};

/// A path as its segments, each as the points of short lines; in a shape's own coordinates, inches.
struct FormulaPath {
  std::vector<std::vector<Point>> segments;
};

/// What a theme gives for a name.
struct ThemeAnswer {
  enum Kind : std::uint8_t { NoTheme, Known, Unknown };
  Kind kind = Unknown;
  Value value;  ///< when known; what a shape without a theme has in its place when there is none and that is known
};

/// What a formula may ask while it is evaluated. Implemented over the sheets by host/recalc; tests bring
/// their own.
class EvaluationContext {
 public:
  virtual ~EvaluationContext() = default;

  /// The current value of the referenced cell; #REF! when there is none.
  virtual Value valueOf(const Reference& reference) = 0;
  /// TEXTWIDTH and TEXTHEIGHT of this shape's text, inches.
  virtual double measureText(const TextMetricsRequest& request) = 0;
  /// SHAPETEXT of the referenced shape (the reference names its TheText cell).
  virtual std::string shapeText(const Reference& reference) = 0;
  /// Point from the coordinates of one shape to another's: `from`/`to` null is this shape; scope ThePage is the page.
  virtual Maybe<Value> convertPoint(const Value& point, const Reference* from, const Reference* to) = 0;
  /// This shape's local coordinates to its parent's (PAR), and the parent's of the other shape likewise.
  virtual Maybe<Value> toParent(const Value& point, const Reference* shape) = 0;
  /// The place of the end that is being evaluated, of a 1-D shape whose ends walk around the shapes they are glued to,
  /// in the parent's coordinates; nothing when no formula decides that.
  virtual Maybe<Value> walkedTo() { return {}; }
  /// "PAGENAME", "PAGENUMBER", "PAGECOUNT", "NAME", "ID", "DOCLASTSAVE", "DOCCREATION", "CREATOR", "TITLE", "FILENAME",
  /// "DIRECTORY", "MASTERNAME", "TYPE", "NOW", …; nothing when the host does not know.
  virtual Maybe<Value> property(std::string_view name) = 0;
  /// The path of a Geometry section, named by any of its cells. `exists` false for no such section; nothing is returned
  /// for one whose curves we don't measure.
  virtual Maybe<FormulaPath> path(const Reference&, bool& exists) {
    exists = false;
    return {};
  }
  /// Left, bottom, right and top of what the shape and its members draw, in the parent's coordinates.
  virtual Maybe<std::vector<double>> boundingBox() { return {}; }
  /// The formula of another cell, evaluated there with these named arguments; nothing for one that is not known.
  virtual Maybe<Value> evaluateCell(const Reference&, std::vector<std::pair<std::string, Value>>) { return {}; }
  /// Text evaluated as a formula on the sheet of the reference.
  virtual Maybe<Value> evaluateText(const Reference&, const std::string&) { return {}; }
  /// The unit that an implicit one means here: Drawing and Page are shown in the units of the page's scale.
  virtual Unit explicitUnit(Unit unit) { return unit == Unit::Drawing || unit == Unit::Page ? Unit::Inches : unit; }
  /// A property of the theme by its name ("FillColor", "AccentColor2"); an empty name asks for the cell itself.
  virtual ThemeAnswer themeValue(std::string_view) { return {}; }
  /// The colour 0xRRGGBB as the theme's gradient has it at the 1-based stop; the same one without a gradient; nothing
  /// when that is not known.
  virtual Maybe<std::uint32_t> throughGradientStop(std::uint32_t, int) { return {}; }
  /// What EVALCELL handed over under the name; nothing when it did not.
  virtual Maybe<Value> argument(std::string_view) { return {}; }
  /// The cell of a shape that this one is related to: "CONTAINER", "LIST" or "CALLOUTTARGET", the `index`-th of them
  /// (1-based, in front first) that has the category (empty: any); #REF! when there is none.
  virtual Value relatedValue(std::string_view, int, std::string_view, const Reference&) {
    return Value::error(ErrorCode::Reference);
  }
  /// Whether the cell holds a formula: at all, or itself.
  virtual bool hasFormula(const Reference&, bool) { return false; }
  /// Number of the document's font of this name; nothing when it has none.
  virtual Maybe<int> fontNumber(std::string_view) { return {}; }
  /// LISTSEP and DECIMALSEP.
  virtual std::string listSeparator() { return ","; }
  virtual std::string decimalSeparator() { return "."; }
  /// The value that the cell had before this run: an unknown function does not change it.
  virtual Value lastValue() = 0;
};

struct FormulaNode;  // internal to the parser and evaluator

/// Immutable once parsed. It is independent of sheets: references are resolved by the context.
class Formula {
 public:
  ~Formula();
  Formula(const Formula&) = delete;
  Formula& operator=(const Formula&) = delete;

  /// As written, without a leading "=" and the blanks around it.
  const std::string& text() const { return text_; }
  const std::vector<Reference>& references() const { return references_; }
  bool isGuarded() const { return guarded_; }
  /// Its value can change though no referenced cell does (NOW, PAGENAME, …).
  bool isVolatile() const { return volatile_; }
  /// It asks for the text's size or content, so it depends on the sheet's TheText.
  bool readsText() const { return readsText_; }
  /// It asks LOC, PAR and the like, so it depends on the transforms of shapes between.
  bool readsTransforms() const { return readsTransforms_; }
  /// It asks what containers, lists and callouts its shape is related to, or of which categories it is.
  bool readsRelations() const { return readsRelations_; }
  /// Every function in it is one that the evaluator has.
  bool isKnown() const { return known_; }
  /// For a formula that is one constant: its value. The cell then needs no evaluation.
  const Maybe<Value>& constant() const { return constant_; }

  /// The source with each shape that it names on its own page replaced by "Sheet.n" through `newId`, which gives a
  /// number for a reference; negative to leave it.
  template <class NewId>
  std::string textWithIds(NewId newId) const {
    std::string result;
    std::size_t from = 0;
    for (const Reference& reference : references_) {
      if (reference.idLength == 0 || reference.idPosition < from) continue;
      const int number = newId(reference);
      if (number < 0) continue;
      result.append(text_, from, reference.idPosition - from);
      if (reference.scope == ReferenceScope::NamedShape) result += "Sheet.";
      result += std::to_string(number);
      from = reference.idPosition + reference.idLength;
    }
    return result.append(text_, from);
  }

 private:
  friend class FormulaParser;
  friend class Evaluator;
  Formula();
  std::string text_;
  std::vector<Reference> references_;  ///< in the order of the source
  std::vector<FormulaNode> nodes_;     ///< a tree by index; the root is the last
  std::vector<Value> constants_;
  std::vector<std::uint32_t> arguments_;  ///< node indices of all calls' arguments, each call's side by side
  Maybe<Value> constant_;
  bool guarded_ = false, volatile_ = false, readsText_ = false, readsTransforms_ = false, readsRelations_ = false,
       known_ = true;
};

using FormulaPtr = std::shared_ptr<const Formula>;

/// Parses. Nothing for text that is no formula. Accepts a leading "=", blanks anywhere between tokens (before "!" too),
/// any letter case, "," and ";" as separators, empty arguments, and functions that the evaluator lacks.
FormulaPtr parseFormula(std::string_view text);

/// Shares parsed formulas by text; removes those that no cell holds any more.
class FormulaPool {
 public:
  /// Null for text that is no formula.
  FormulaPtr get(std::string_view text);
  std::size_t size() const { return formulas_.size(); }

 private:
  void removeUnused();
  std::unordered_map<std::string, std::weak_ptr<const Formula>> formulas_;
  std::size_t nextSweep_ = 1024;
};

/// Cannot fail: what goes wrong is an error value. Nothing is given when a function is needed that the evaluator lacks;
/// the cell then keeps its value.
Maybe<Value> evaluate(const Formula& formula, EvaluationContext& context);

}  // namespace quorvel::host
