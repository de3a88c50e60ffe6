// What lines of text cannot test of formulas: their references, traits, sharing, and hostile text.
#include "host/formula/formula.h"

#include <gtest/gtest.h>

#include "host/cells/cell_table.h"
#include "host/formula/local_syntax.h"
#include "host/sheet/sheet.h"
#include "test_context.h"

namespace quorvel::host {
namespace {

FormulaPtr parsed(std::string_view text) {
  FormulaPtr formula = parseFormula(text);
  EXPECT_TRUE(formula) << text;
  return formula;
}

TEST(Formula, KeepsItsTextWithoutTheSign) {
  EXPECT_EQ(parsed("  =  PinX  *2 ")->text(), "PinX  *2");
  EXPECT_EQ(parsed("\"a=b\"")->text(), "\"a=b\"");
}

TEST(Formula, NamesWhatItReads) {
  const FormulaPtr formula = parsed(
      "PinX+Sheet.12 !Prop.Task_ID.Label+Star!Angle+Executive.3!Width+ThePage!User.Rate+TheDoc!User.lstSpr+"
      "Pages[My Page]!Sheet.4!BeginX+Styles!'Text Only'!LineColor+Masters[Gear]!Shaft!Width+'It''s "
      "here'!PinX+Nonsense");
  const std::vector<Reference>& references = formula->references();
  ASSERT_EQ(references.size(), 11u);
  const ReferenceScope scopes[] = {ReferenceScope::ThisSheet,  ReferenceScope::Shape,    ReferenceScope::NamedShape,
                                   ReferenceScope::NamedShape, ReferenceScope::ThePage,  ReferenceScope::TheDocument,
                                   ReferenceScope::Page,       ReferenceScope::Style,    ReferenceScope::Master,
                                   ReferenceScope::NamedShape, ReferenceScope::ThisSheet};
  const std::string_view names[] = {"",        "",          "Star", "Executive.3", "", "",
                                    "My Page", "Text Only", "Gear", "It's here",   ""};
  const int ids[] = {0, 12, 0, 3, 0, 0, 4, 0, 0, 0, 0};
  for (std::size_t i = 0; i < references.size(); ++i) {
    EXPECT_EQ(references[i].scope, scopes[i]) << i;
    EXPECT_EQ(references[i].name, names[i]) << i;
    EXPECT_EQ(references[i].shapeId, ids[i]) << i;
    EXPECT_EQ(bool(references[i].cell), references[i].cellText != "Nonsense") << i;
  }
  EXPECT_EQ(references[8].innerName, "Shaft");
  EXPECT_EQ(references[0].cell, objectCell("PinX"));
  EXPECT_EQ(references[1].cell.row, RowKey::named(intern("task_id")));
}

TEST(Formula, RewritesTheNumbersOfShapesOfItsOwnPageOnly) {
  const auto rewrite = [](std::string_view text) {
    return parsed(text)->textWithIds(
        [](const Reference& shape) { return shape.shapeId == 99 || shape.name == "Far" ? -1 : shape.shapeId + 100; });
  };
  EXPECT_EQ(rewrite("GUARD(Height-0.07+Sheet.7 !Height+sheet.8!PinX)"),
            "GUARD(Height-0.07+Sheet.107 !Height+sheet.108!PinX)");
  EXPECT_EQ(rewrite("\"Sheet.7!X\"&Sheet.7!Prop.Cost&Sheet.99!PinX"),
            "\"Sheet.7!X\"&Sheet.107!Prop.Cost&Sheet.99!PinX");
  EXPECT_EQ(rewrite("Task.5!Width+'Odd ''name.6' !Width+Star!Angle+Far!PinX+'Sheet.9'!PinY"),
            "Sheet.105!Width+Sheet.106 !Width+Sheet.100!Angle+Far!PinX+'Sheet.109'!PinY");
  EXPECT_EQ(rewrite("Pages[Page-3]!Sheet.4!PinX+Prop.Row_4+ThePage!PageWidth"),
            "Pages[Page-3]!Sheet.4!PinX+Prop.Row_4+ThePage!PageWidth");
}

TEST(Formula, WatchesWhatItReadsButNotWhatItWritesTo) {
  const auto watched = [](std::string_view text) {
    std::string names;
    const FormulaPtr formula = parsed(text);
    for (const Reference& reference : formula->references()) {
      if (reference.watched) names += reference.cellText + " ";
    }
    return names;
  };
  EXPECT_EQ(watched("GETREF(PinX)+Width"), "Width ");
  EXPECT_EQ(watched("GETVAL(PinX)+GETVAL(PinY)+Width"), "Width ");
  EXPECT_EQ(watched("SETF(GETREF(PinX),Width+1)"), "Width ");
  EXPECT_EQ(watched("DEPENDSON(PinX,PinY)"), "PinX PinY ");
  EXPECT_EQ(watched("IF(Width>1,PinX,PinY)"), "Width PinX PinY ");
  // The value of SETATREF is that of the cell it redirects to; only the expression to be written is left out.
  EXPECT_EQ(watched("SETATREF(User.Delta,SETATREFEVAL(SETATREFEXPR()-Star!PinX))+Height"), "User.Delta Height ");
}

TEST(Formula, ListsItsTraits) {
  EXPECT_TRUE(parsed("guard(1+PinX)")->isGuarded());
  EXPECT_TRUE(parsed("IF(Width>1,GUARD(2),3)")->isGuarded());
  EXPECT_FALSE(parsed("\"GUARD(1)\"")->isGuarded());
  EXPECT_TRUE(parsed("DOCLASTSAVE()")->isVolatile());
  EXPECT_TRUE(parsed("PAGENAME()&\"x\"")->isVolatile());
  EXPECT_FALSE(parsed("PinX+PinY")->isVolatile());
  EXPECT_TRUE(parsed("GUARD(TEXTWIDTH(TheText)+0.5 in)")->readsText());
  EXPECT_TRUE(parsed("SHAPETEXT(TheText)")->readsText());
  EXPECT_TRUE(parsed("PNTX(PAR(PNT(Sheet.5!PinX,Sheet.5!PinY)))")->readsTransforms());
  EXPECT_FALSE(parsed("IF(1,2,REWIDEN(1,2,3))")->isKnown());
  EXPECT_TRUE(parsed("IF(1,2,3)")->isKnown());
}

TEST(Formula, IsAConstantWhenItReadsNothing) {
  const std::pair<std::string_view, std::string_view> constants[] = {
      {"5 mm", "5 mm"}, {"-0.48", "-0.48"}, {"GUARD(2*3)", "6"}, {"\"text\"", "text"}, {"1/0", "#DIV/0!"}};
  for (const auto& [text, value] : constants) {
    ASSERT_TRUE(parsed(text)->constant()) << text;
    EXPECT_EQ(parsed(text)->constant()->asText(), value);
  }
  for (const std::string_view text : {"PinX", "PAGENAME()", "RAND()", "LISTSEP()", "TEXTWIDTH(TheText)", "UNKNOWN(1)"})
    EXPECT_FALSE(parsed(text)->constant()) << text;
}

TEST(Formula, ReadsOnlyTheBranchThatItTakes) {
  TestContext context;
  context.set("Width", "1");
  context.set("PinX", "2");
  EXPECT_EQ(evaluate(*parsed("IF(Width,PinX,PinY+Height+Angle)"), context)->asText(), "2");
  EXPECT_EQ(context.reads, 2);
}

TEST(Formula, PoolSharesByTextAndFreesUnused) {
  FormulaPool pool;
  const FormulaPtr first = pool.get("Width*0.5");
  EXPECT_EQ(pool.get("= Width*0.5"), first);
  EXPECT_NE(pool.get("width*0.5"), first) << "the text is kept as written";
  EXPECT_FALSE(pool.get("1+"));
  for (int i = 0; i < 5000; ++i) pool.get("Width*" + std::to_string(i));
  EXPECT_LT(pool.size(), 2000u) << "unused formulas must be freed";
  EXPECT_EQ(pool.get("Width*0.5"), first);
}

TEST(Formula, HostileTextEndsInNoFormulaOrAValue) {
  TestContext context;
  const auto repeated = [](std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
  };
  EXPECT_FALSE(parseFormula(repeated("(", 100'000) + "1" + repeated(")", 100'000)));
  EXPECT_FALSE(parseFormula(repeated("IF(1,", 50'000)));
  EXPECT_FALSE(parseFormula(repeated("1+", 100'000) + "1")) << "its tree would be as deep as it is long";
  EXPECT_FALSE(parseFormula(repeated("1^(", 1000)));
  EXPECT_TRUE(parseFormula(repeated("-", 100'000) + "1"));
  EXPECT_FALSE(parseFormula(std::string_view("\xFF\xFE\x00(", 4)));
  EXPECT_FALSE(parseFormula(""));
  EXPECT_FALSE(parseFormula("="));
  const FormulaPtr wide = parseFormula("SUM(" + repeated("1,", 10'000) + "1)");
  ASSERT_TRUE(wide);
  EXPECT_EQ(evaluate(*wide, context)->asText(), "10001");
  const FormulaPtr nested = parseFormula(repeated("(", 100) + "PinX" + repeated(")", 100));
  ASSERT_TRUE(nested);
  for (const std::string_view text :
       {"LEFT(\"abc\",1E300)", "DATE(1E300,1,1)", "DAY(1E300)", "REPT(\"a\",1E300)", "ROUND(1.5,1E300)",
        "BITAND(1E300,1)", "INDEX(1E300,\"a\")", "CHAR(1E300)", "FORMAT(1E300,\"#,##0.000\")",
        "FORMAT(1E300,\"[h]:mm\")", "FORMAT(1E300,\"# #/###\")", "FORMAT(DATETIME(-1E300),\"C\")", "GRAVITY(1E300)",
        "CEILING(1E300)"}) {
    const FormulaPtr formula = parsed(text);
    EXPECT_TRUE(evaluate(*formula, context)) << text;
  }
}

TEST(Value, ReadsAsNumberInGivenUnits) {
  struct Case {
    Value value;
    int units;
    double expected;
  };
  const Case cases[] = {
      {Value::number(1, Unit::Inches), 0, 1},
      {Value::number(1, Unit::Inches), 70, 25.4},
      {Value::number(1, Unit::Inches), 50, 72},
      {Value::number(5), 50, 5},
      {Value::text("2 eh."), 0, 2.0 / 24},
      {Value::text("2 eh."), 46, 120},
      {Value::text("5 mm"), 69, 0.5},
      {Value::boolean(true), 0, 1},
      {Value::number(0.5, Unit::Percent), 33, 50},
      {Value::number(1, Unit::Inches), 46, 1},
  };
  for (const Case& c : cases) {
    const Maybe<double> number = c.value.asNumberIn(c.units);
    ASSERT_TRUE(number) << c.value.asText();
    EXPECT_NEAR(*number, c.expected, 1e-12) << c.value.asText() << " in " << c.units;
  }
  EXPECT_FALSE(Value::text("Send form").asNumberIn(0));
  EXPECT_FALSE(Value::text("5 apples").asNumber());
  EXPECT_FALSE(Value::error(ErrorCode::Circle).asNumber());
  EXPECT_EQ(Value::number(1, Unit::Inches).asText(70), "25.4 mm");
  EXPECT_EQ(Value::number(0.5, Unit::ElapsedHour).asText(45), "12 eh.");
  EXPECT_EQ(Value::number(12).asText(46), "12 em.");
  EXPECT_EQ(Value::text("2 eh.").asText(46), "120 em.");
  EXPECT_EQ(Value::number(0.5, Unit::Inches).asText(32), "0.5");
}

TEST(Units, SuffixesAndFileNamesComeBack) {
  for (int code = 0; code < 256; ++code) {
    const Unit unit = static_cast<Unit>(code);
    const std::string name(fileNameOf(unit));
    if (name == "NUM") continue;
    EXPECT_EQ(unitOfFileName(name), unit) << name;
    // What a result shows, a formula and a text read again, apart from area and the compound units.
    const std::string suffix(shownSuffix(unit));
    if (suffix.empty() || dimensionOf(unit) == Dimension::Area || unit == Unit::Minutes || unit == Unit::Seconds)
      continue;
    const Maybe<Value> read = parseQuantity("3 " + suffix);
    ASSERT_TRUE(read) << suffix;
    EXPECT_NEAR(read->internal(), toInternal(3, unit), 1e-9 * std::abs(toInternal(3, unit))) << name;
  }
  EXPECT_EQ(unitOfFileName("dl"), Unit::Drawing);
  EXPECT_FALSE(unitOfFileName("FURLONG"));
}

TEST(CellTable, NamesPlacesAndDefinitionsAgree) {
  for (const CellDefinition& definition : cellDefinitions()) {
    const CellKey key{definition.section, RowKey::index(definition.row), definition.column};
    ASSERT_EQ(definitionOf(key), &definition) << definition.name << ": two cells have one place";
    EXPECT_EQ(columnName(key), definition.name);
    if (definition.section == SectionNumber::Object) {
      EXPECT_EQ(objectCell(definition.name), key) << definition.name;
    } else {
      EXPECT_EQ(columnOf(definition.section, definition.name), definition.column) << definition.name;
    }
  }
  const CellKey second{SectionNumber(11), RowKey::index(7), 2};
  EXPECT_EQ(columnName(second), "A") << "all Geometry sections share their cells";
  const CellKey unknown = objectCellOrNew("FutureCell");
  EXPECT_EQ(objectCellOrNew("futurecell"), unknown);
  EXPECT_EQ(columnName(unknown), "FutureCell");
  EXPECT_EQ(definitionOf(unknown), nullptr);
  const Column column = columnOrNew(SectionNumber::User, "FutureColumn");
  EXPECT_EQ(columnName({SectionNumber::User, RowKey::index(0), column}), "FutureColumn");
  EXPECT_EQ(sectionOfFileName("property"), SectionNumber::Property);
  EXPECT_EQ(fileNameOf(SectionNumber::Property), "Property");
}

TEST(Atoms, FoldCaseAndKeepSpelling) {
  const Atom name = intern("Frequency_Of"), other = intern("frequency_of");
  EXPECT_NE(name, other);
  EXPECT_EQ(folded(name), folded(other));
  EXPECT_EQ(spelling(name), "Frequency_Of");
  EXPECT_EQ(findFolded("FREQUENCY_OF"), folded(name));
  EXPECT_FALSE(findFolded("never interned by anyone"));
  EXPECT_FALSE(intern(""));
  EXPECT_EQ(RowKey::named(name), RowKey::named(other));
  EXPECT_EQ(CellKey::fromPacked(CellKey{SectionNumber::User, RowKey::named(name), 1}.packed()),
            (CellKey{SectionNumber::User, RowKey::named(name), 1}));
}

TEST(Formula, AValueShownAsAConstantReadsAsItself) {
  for (const Value& value :
       {Value::number(-0.1), Value::number(2.5, Unit::Millimetres), Value::number(0.25, Unit::ElapsedHour),
        Value::number(toInternal(45, Unit::Degrees), Unit::Degrees), Value::text("say \"hi\""), Value::boolean(true),
        Value::date(38841.5), Value::point(1, 2), Value::colour(0x0102ff), Value::error(ErrorCode::Reference)}) {
    Cell cell;
    cell.value = value;
    const FormulaPtr formula = parseFormula(formulaText(cell));
    ASSERT_TRUE(formula && formula->constant()) << formulaText(cell);
    EXPECT_EQ(formula->constant()->kind(), value.kind()) << formulaText(cell);
    EXPECT_EQ(formula->constant()->asText(), value.asText());
  }
}

TEST(Formula, IsWrittenAndReadInTheSyntaxOfACountry) {
  const FormulaLocale german{';', ','};
  const struct {
    const char *local, *universal;
  } cases[] = {
      {"1,5 in", "1.5 in"},
      {"IF(Width>0,5;\"a;b,c.d\";Height*,25)", "IF(Width>0.5,\"a;b,c.d\",Height*.25)"},
      {"RGB(1;2;3)", "RGB(1,2,3)"},
      {"Geometry1.X1+Sheet.5!Prop.A.1*2,0", "Geometry1.X1+Sheet.5!Prop.A.1*2.0"},
      {"Pages[A;B, 1.5]!PinX+'it''s 1,5;'!PinX", "Pages[A;B, 1.5]!PinX+'it''s 1,5;'!PinX"},
      {"\"He said \"\"1,5\"\"\"&2,5", "\"He said \"\"1,5\"\"\"&2.5"},
      {"BOUND(;0;FALSE;2,5 in;4 in)", "BOUND(,0,FALSE,2.5 in,4 in)"},
      {"1,5E-3*x", "1.5E-3*x"},
      {"Char.Size[1]+Actions.Menu[2]", "Char.Size[1]+Actions.Menu[2]"},
      {"", ""},
      {"\"never closed, 1;2", "\"never closed, 1;2"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(toUniversalSyntax(each.local, german), each.universal);
    EXPECT_EQ(toLocalSyntax(each.universal, german), each.local);
    EXPECT_EQ(toLocalSyntax(each.universal, FormulaLocale{}), each.universal);
  }
  EXPECT_EQ(toLocalSyntax("SUM(1;2)", german), "SUM(1;2)") << "drawings hold either separator";
}

}  // namespace
}  // namespace quorvel::host
