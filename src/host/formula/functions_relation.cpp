// Functions that reach beyond their arguments: formulas of other cells and of texts, containers, lists and callouts,
// fonts and languages, and what the theme decided.
#include <algorithm>
#include <array>

#include "base/text.h"
#include "host/formula/functions.h"
#include "host/formula/word_list.h"

namespace quorvel::host {
namespace {

/// What only the program that wrote the file knows: the cell keeps its value.
Value unknown(Call& call) { return call.unknown(); }

/// The name of a theme's property. As text "1" to "8" count the colours from the dark one; as a number, which comes
/// from a cell that says which colour a shape takes, they are counted as there.
std::string themeProperty(Call& call) {
  const Value name = call.value(0);
  if (!name.isText()) return "#" + std::to_string(call.whole(0));
  const std::string text(name.textView());
  if (text.size() == 1 && text[0] >= '1' && text[0] <= '8') return "#" + std::to_string(text[0] - '1');
  return text;
}

/// The value of the theme by name; without a theme the second argument.
Value themed(Call& call) {
  const std::string name = call.given(0) ? themeProperty(call) : std::string();
  const ThemeAnswer answer = call.context().themeValue(name);
  switch (answer.kind) {
    case ThemeAnswer::Known:
      return answer.value;
    case ThemeAnswer::NoTheme:
      return call.given(1) ? call.value(1) : answer.value.isError() ? call.unknown() : answer.value;
    case ThemeAnswer::Unknown:
      break;
  }
  return call.unknown();
}

Value evaluateCell(Call& call) {
  const Reference* cell = call.reference(0);
  if (!cell) return call.fail(ErrorCode::Reference);
  std::vector<std::pair<std::string, Value>> arguments;
  for (int i = 1; i + 1 < call.count(); i += 2) {
    std::string name = call.text(i);
    arguments.emplace_back(std::move(name), call.value(i + 1));
  }
  const Maybe<Value> value = call.context().evaluateCell(*cell, std::move(arguments));
  return value ? *value : call.unknown();
}

Value argument(Call& call) {
  const Maybe<Value> given = call.context().argument(call.text(0));
  return given ? *given : call.value(1);
}

Value evaluateText(Call& call) {
  const Reference* shape = call.reference(0);
  if (!shape) return call.fail(ErrorCode::Value);
  const std::string text = call.context().shapeText(*shape);
  if (trimmed(text).empty()) return {};
  const Maybe<Value> value = call.context().evaluateText(*shape, text);
  return value ? *value : call.fail(ErrorCode::Value);
}

Value hasFormula(Call& call, bool localOnly) {
  const Reference* cell = call.reference(0);
  if (!cell) return call.fail(ErrorCode::Reference);
  return Value::boolean(call.context().hasFormula(*cell, localOnly));
}

Value hasCategory(Call& call) {
  const Maybe<Value> categories = call.context().property("CATEGORIES");
  if (!categories) return Value::boolean(false);
  return Value::boolean(hasWord(categories->asText(), call.text(0)));
}

/// "CONTAINERSHEETREF(1,"Swimlane")!Width": the cell behind the mark is the call's last argument.
Value ofRelated(Call& call, std::string_view relation) {
  const int last = call.count() - 1;
  const Reference* cell = last >= 0 ? call.reference(last) : nullptr;
  if (!cell) return call.unknown();
  const int index = last >= 1 ? call.whole(0, 1) : 1;
  const std::string category = last >= 2 ? call.text(1) : std::string();
  return call.context().relatedValue(relation, index, category, *cell);
}

Value font(Call& call) {
  const std::string name = call.text(0);
  const Maybe<int> number = call.context().fontNumber(name);
  return number ? Value::number(*number) : call.unknown();
}

struct Language {
  std::string_view tag;
  int number;
};

constexpr std::array<Language, 44> languages = {{
    {"ar-SA", 1025}, {"bg-BG", 1026}, {"ca-ES", 1027}, {"zh-TW", 1028}, {"cs-CZ", 1029}, {"da-DK", 1030},
    {"de-DE", 1031}, {"el-GR", 1032}, {"en-US", 1033}, {"fi-FI", 1035}, {"fr-FR", 1036}, {"he-IL", 1037},
    {"hu-HU", 1038}, {"is-IS", 1039}, {"it-IT", 1040}, {"ja-JP", 1041}, {"ko-KR", 1042}, {"nl-NL", 1043},
    {"nb-NO", 1044}, {"pl-PL", 1045}, {"pt-BR", 1046}, {"ro-RO", 1048}, {"ru-RU", 1049}, {"hr-HR", 1050},
    {"sk-SK", 1051}, {"sq-AL", 1052}, {"sv-SE", 1053}, {"th-TH", 1054}, {"tr-TR", 1055}, {"uk-UA", 1058},
    {"sl-SI", 1060}, {"et-EE", 1061}, {"lv-LV", 1062}, {"lt-LT", 1063}, {"vi-VN", 1066}, {"hi-IN", 1081},
    {"de-CH", 2055}, {"en-GB", 2057}, {"nn-NO", 2068}, {"pt-PT", 2070}, {"zh-CN", 2052}, {"de-AT", 3079},
    {"es-ES", 3082}, {"en-CA", 4105},
}};

/// A number is one already.
Value language(Call& call) {
  const Value given = call.value(0);
  if (!given.isText()) return given;
  const std::string tag = given.asText();
  for (const Language& each : languages) {
    if (equalIgnoringCase(each.tag, tag)) return Value::number(each.number);
  }
  const Maybe<double> number = given.asNumber();
  return number ? Value::number(*number) : call.unknown();
}

constexpr std::uint16_t asksRelations = AsksHost | Changes | ReadsRelations;

constexpr FunctionRow rows[] = {
    {"EVALCELL", evaluateCell, AsksHost},
    {"ARG", argument, AsksHost},
    {"EVALTEXT", evaluateText, AsksHost | ReadsText},
    {"FORMULAEXISTS", [](Call& c) { return hasFormula(c, false); }, AsksHost},
    {"LOCALFORMULAEXISTS", [](Call& c) { return hasFormula(c, true); }, AsksHost},
    {"HASCATEGORY", hasCategory, asksRelations},
    {"CONTAINERSHEETREF", [](Call& c) { return ofRelated(c, "CONTAINER"); }, asksRelations | TakesCell},
    {"LISTSHEETREF", [](Call& c) { return ofRelated(c, "LIST"); }, asksRelations | TakesCell},
    {"CALLOUTTARGETREF", [](Call& c) { return ofRelated(c, "CALLOUTTARGET"); }, asksRelations | TakesCell},
    {"FONT", font, AsksHost},
    {"FONTTOID", font, AsksHost},
    {"LANGUAGE", language},
    {"THEME", themed, AsksHost},
    {"THEMEVAL", themed, AsksHost},
    {"THEMEPROP", themed, AsksHost},
    {"THEMERESTORE", unknown, AsksHost},
};

}  // namespace

std::span<const FunctionRow> relationFunctions() { return rows; }

}  // namespace quorvel::host
