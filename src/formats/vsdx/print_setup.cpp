#include "formats/vsdx/print_setup.h"

#include "formats/common/cell_text.h"
#include "formats/package/xml_reading.h"
#include "host/cells/cell_table.h"

namespace quorvel::formats {
namespace {

struct Setting {
  std::string_view element;
  std::string_view cells[2];
};
constexpr Setting settings[] = {
    {"PaperSize", {"PaperKind"}},
    {"PrintCenteredH", {"CenterX"}},
    {"PrintCenteredV", {"CenterY"}},
    {"PrintFitOnPages", {"OnPage"}},
    {"PrintPagesAcross", {"PagesX"}},
    {"PrintPagesDown", {"PagesY"}},
    {"PrintScale", {"ScaleX", "ScaleY"}},
    {"PageTopMargin", {"PageTopMargin"}},
    {"PageBottomMargin", {"PageBottomMargin"}},
    {"PageLeftMargin", {"PageLeftMargin"}},
    {"PageRightMargin", {"PageRightMargin"}},
    {"PrintLandscape", {"PrintPageOrientation"}},
};

}  // namespace

void takePrintSetup(std::string printSetup, host::Sheet& page) {
  pugi::xml_document parsed;
  if (!parseXml(parsed, printSetup).empty()) return;
  for (const Setting& setting : settings) {
    const pugi::xml_node element = childNamed(parsed.document_element(), setting.element);
    if (!element) continue;
    std::string text = innerText(element);
    // Upright is 1 and lying 2; 0 would be what the printer is set to.
    if (setting.element == "PrintLandscape") text = truth(text) ? "2" : "1";
    for (const std::string_view name : setting.cells) {
      if (name.empty()) continue;
      const host::CellKey key = host::objectCell(name);
      if (page.findLocal(key)) continue;
      CellAttributes attributes;
      attributes.hasValue = true;
      attributes.value = text;
      attributes.unit = element.attribute("Unit").value();
      page.local(key).value = readValue(key, host::definitionOf(key), attributes);
    }
  }
}

}  // namespace quorvel::formats
