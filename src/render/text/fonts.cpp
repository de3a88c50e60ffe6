#include "render/text/fonts.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <set>

#include "base/text.h"

#ifdef __SANITIZE_ADDRESS__
// The font configuration library keeps what it read until the process ends, and the leak checker cannot see who holds
// it.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
// Silent, so that a command's error output stays its own.
extern "C" const char* __lsan_default_options();
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#endif

namespace quorvel::render {
namespace {

/// Families of equal or close widths; the first that is installed is taken.
constexpr std::string_view standIns[][4] = {
    {"Arial", "Liberation Sans", "Helvetica", "sans-serif"},
    {"Helvetica", "Liberation Sans", "Arial", "sans-serif"},
    {"Calibri", "Carlito", "Liberation Sans", "sans-serif"},
    {"Calibri Light", "Carlito", "Liberation Sans", "sans-serif"},
    {"Aptos", "Carlito", "Liberation Sans", "sans-serif"},
    {"Arial Narrow", "Liberation Sans Narrow", "Liberation Sans", "sans-serif"},
    {"Segoe UI", "Open Sans", "Liberation Sans", "sans-serif"},
    {"Tahoma", "DejaVu Sans Condensed", "Liberation Sans", "sans-serif"},
    {"Trebuchet MS", "Fira Sans", "Liberation Sans", "sans-serif"},
    {"Verdana", "DejaVu Sans", "Bitstream Vera Sans", "sans-serif"},
    {"Times New Roman", "Liberation Serif", "Times", "serif"},
    {"Times", "Liberation Serif", "Times New Roman", "serif"},
    {"Cambria", "Caladea", "Liberation Serif", "serif"},
    {"Georgia", "Gelasio", "Liberation Serif", "serif"},
    {"Garamond", "EB Garamond", "Liberation Serif", "serif"},
    {"Courier New", "Liberation Mono", "Courier", "monospace"},
    {"Consolas", "Inconsolata", "Liberation Mono", "monospace"},
    {"Wingdings", "OpenSymbol", "DejaVu Sans", "sans-serif"},
    {"Symbol", "OpenSymbol", "DejaVu Sans", "sans-serif"},
};

const std::set<std::string>& installed() {
  static const std::set<std::string> names = [] {
    std::set<std::string> found;
    PangoFontFamily** families = nullptr;
    int count = 0;
    pango_font_map_list_families(pango_cairo_font_map_get_default(), &families, &count);
    for (int i = 0; i < count; ++i) found.insert(foldCase(pango_font_family_get_name(families[i])));
    g_free(families);
    return found;
  }();
  return names;
}

bool isInstalled(std::string_view family) { return installed().contains(foldCase(family)); }

std::string findInstalled(std::string_view family) {
  if (!family.empty() && isInstalled(family)) return std::string(family);
  for (const auto& row : standIns) {
    if (!equalIgnoringCase(row[0], family)) continue;
    for (int i = 1; i < 3; ++i)
      if (isInstalled(row[i])) return std::string(row[i]);
  }
  for (std::string_view any : {"Liberation Sans", "Arial", "DejaVu Sans"})
    if (isInstalled(any)) return std::string(any);
  return "Sans";
}

}  // namespace

void findFontsAhead() { pango_cairo_font_map_get_default(); }

std::string installedFamily(std::string_view family) {
  static std::mutex mutex;
  static std::map<std::string, std::string, std::less<>> known;
  const std::lock_guard lock(mutex);
  const auto found = known.find(family);
  if (found != known.end()) return found->second;
  return known.emplace(std::string(family), findInstalled(family)).first->second;
}

std::string familyWithStandIns(std::string_view family) {
  const auto written = [](std::string_view name) {
    return name.find(' ') == std::string_view::npos ? std::string(name) : "'" + std::string(name) + "'";
  };
  std::string list = written(family);
  for (const auto& row : standIns) {
    const auto place = std::find_if(std::begin(row), std::begin(row) + 3,
                                    [&](std::string_view name) { return equalIgnoringCase(name, family); });
    if (place == std::begin(row) + 3) continue;
    for (std::string_view name : row)
      if (!equalIgnoringCase(name, family)) list += ", " + written(name);
    return list;
  }
  return list + ", sans-serif";
}

}  // namespace quorvel::render
