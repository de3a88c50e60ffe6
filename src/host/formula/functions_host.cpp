// Functions that ask the drawing, and those that act when a user calls them and give 0 when they are evaluated.
#include <algorithm>

#include "base/text.h"
#include "host/formula/functions.h"

namespace quorvel::host {
namespace {

/// What acts, acts on a double click or a menu entry; evaluation must never start anything.
Value nothing(Call&) { return {}; }

template <std::size_t size>
struct Name {
  constexpr Name(const char (&text)[size]) { std::copy_n(text, size, letters); }
  char letters[size];
};

/// A function that is a property of the document, the page or the shape under the same name. Names are asked for in a
/// language: the universal one has a property of its own, with a "U" behind it.
template <Name name>
Value property(Call& call) {
  constexpr int universalLanguage = 750;
  const std::string_view local(name.letters, sizeof name.letters - 1);
  if (local.ends_with("NAME") && call.given(0) && call.whole(0) == universalLanguage) {
    if (const Maybe<Value> universal = call.context().property(std::string(local) + "U")) return *universal;
  }
  const Maybe<Value> value = call.context().property(local);
  return value ? *value : call.unknown();
}

template <Name name>
constexpr FunctionRow propertyRow(std::uint16_t more = Pure) {
  const auto traits = static_cast<std::uint16_t>(AsksHost | Changes | more);
  return {std::string_view(name.letters, sizeof name.letters - 1), property<name>, traits};
}

bool isOtherSheet(const Reference* reference) { return reference && reference->scope != ReferenceScope::ThisSheet; }

Value measure(Call& call, bool height) {
  TextMetricsRequest request;
  request.height = height;
  request.maxWidth = call.number(1, -1);
  if (const Reference* shape = call.reference(0); isOtherSheet(shape)) request.shape = shape;
  return Value::number(call.context().measureText(request), Unit::Drawing);
}

enum TextFlag { TabsToBlank = 4, TabsToBlanks = 8, BreaksToBlanks = 16, PlainQuotes = 32, SingleBlanks = 64 };

Value shapeText(Call& call) {
  const Reference* shape = call.reference(0);
  if (!shape) return call.fail(ErrorCode::Value);
  const int flags = call.whole(1);
  std::string text = call.context().shapeText(*shape);
  if (flags & TabsToBlank) text = replaceAll(text, "\t", " ");
  if (flags & TabsToBlanks) text = replaceAll(text, "\t", "    ");
  if (flags & BreaksToBlanks) {
    for (const std::string_view mark : {"\r\n", "\n", "\r", "\xE2\x80\xA8"}) text = replaceAll(text, mark, " ");
  }
  if (flags & PlainQuotes) {
    for (const std::string_view mark : {"\xE2\x80\x9C", "\xE2\x80\x9D"}) text = replaceAll(text, mark, "\"");
    for (const std::string_view mark : {"\xE2\x80\x98", "\xE2\x80\x99"}) text = replaceAll(text, mark, "'");
  }
  if (flags & SingleBlanks) {
    while (text.find("  ") != std::string::npos) text = replaceAll(text, "  ", " ");
  }
  return Value::text(text);
}

constexpr std::uint16_t asksText = AsksHost | ReadsText;

const FunctionRow rows[] = {
    {"TEXTWIDTH", [](Call& c) { return measure(c, false); }, asksText},
    {"TEXTHEIGHT", [](Call& c) { return measure(c, true); }, asksText},
    {"SHAPETEXT", shapeText, asksText},
    // Line ends and patterns of a master's making have one number for all.
    {"USE", [](Call&) { return Value::number(254); }},

    propertyRow<"NOW">(),
    propertyRow<"PAGENAME">(),
    propertyRow<"BKGPAGENAME">(),
    propertyRow<"PAGENUMBER">(),
    propertyRow<"PAGECOUNT">(),
    propertyRow<"NAME">(),
    propertyRow<"ID">(),
    propertyRow<"TYPE">(),
    propertyRow<"TYPEDESC">(),
    propertyRow<"IS1D">(),
    propertyRow<"ISTHEMED">(),
    // The name of earlier releases.
    {"CELLISTHEMED", property<"ISTHEMED">, AsksHost | Changes},
    propertyRow<"MASTERNAME">(),
    propertyRow<"DATA1">(),
    propertyRow<"DATA2">(),
    propertyRow<"DATA3">(),
    propertyRow<"DOCCREATION">(),
    propertyRow<"DOCLASTEDIT">(),
    propertyRow<"DOCLASTPRINT">(),
    propertyRow<"DOCLASTSAVE">(),
    propertyRow<"TITLE">(),
    propertyRow<"SUBJECT">(),
    propertyRow<"CREATOR">(),
    propertyRow<"MANAGER">(),
    propertyRow<"COMPANY">(),
    propertyRow<"CATEGORY">(),
    propertyRow<"KEYWORDS">(),
    propertyRow<"DESCRIPTION">(),
    propertyRow<"HYPERLINKBASE">(),
    propertyRow<"FILENAME">(),
    propertyRow<"DIRECTORY">(),
    propertyRow<"VERSION">(),
    propertyRow<"CALLOUTCOUNT">(ReadsRelations),
    propertyRow<"CONTAINERCOUNT">(ReadsRelations),
    propertyRow<"CONTAINERMEMBERCOUNT">(ReadsRelations),
    propertyRow<"LISTMEMBERCOUNT">(ReadsRelations),
    propertyRow<"LISTORDER">(ReadsRelations),

    {"CALLTHIS", nothing},
    {"DEFAULTEVENT", nothing},
    {"DOCMD", nothing},
    {"DOOLEVERB", nothing},
    {"GOTOPAGE", nothing},
    {"HELP", nothing},
    {"HYPERLINK", nothing},
    {"OPENFILE", nothing},
    {"OPENGROUPWIN", nothing},
    {"OPENSHEETWIN", nothing},
    {"OPENTEXTWIN", nothing},
    {"PLAYSOUND", nothing},
    {"QUEUEMARKEREVENT", nothing},
    {"RUNADDON", nothing},
    {"RUNADDONWARGS", nothing},
    {"RUNMACRO", nothing},
};

}  // namespace

std::span<const FunctionRow> hostFunctions() { return rows; }

}  // namespace quorvel::host
