// Formula text as users of a country write it, to and from the universal syntax in which it is stored.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::host {

/// The two marks that countries write differently. They must differ from each other.
struct FormulaLocale {
  char listSeparator = ',';
  char decimalSeparator = '.';
  bool isUniversal() const { return listSeparator == ',' && decimalSeparator == '.'; }
};

/// Text in quotes and names in brackets or single quotes stay as they are. A comma that is no decimal mark between
/// digits still separates, so that universal text is mostly understood as well.
std::string toUniversalSyntax(std::string_view local, const FormulaLocale& locale);
std::string toLocalSyntax(std::string_view universal, const FormulaLocale& locale);

}  // namespace quorvel::host
