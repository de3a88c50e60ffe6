#include "formats/package/saving_limits.h"

#include "formats/package/xml_measure.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {
namespace {

constexpr std::string_view tooLarge =
    "was not written because it is too large to be opened again; remove pictures or pages, or divide it into several "
    "drawings";
constexpr std::string_view tooDeep =
    "was not written because its groups lie too deep in each other to be opened again; ungroup some of them";

}  // namespace

std::string makePackage(const std::vector<ZipEntry>& entries, const PackageLimits& limits, std::string& bytes) {
  std::uint64_t total = 0, weight = 0;
  for (const ZipEntry& entry : entries) {
    const std::uint64_t size = entry.packed ? entry.packed->size() : entry.bytes.size();
    total += size;
    if (size > limits.partBytes || total > limits.totalBytes) return std::string(tooLarge);
    if (entry.packed || !(entry.name.ends_with(".xml") || entry.name.ends_with(".rels"))) continue;
    const XmlMeasure measure = measureXml(entry.bytes);
    if (measure.depth > deepestElement) return std::string(tooDeep);
    weight += measure.weight;
  }
  if (entries.size() > limits.entries) return std::string(tooLarge);
  bytes = makeZip(entries);
  // Shapes that hardly differ pack so tightly that the file would be taken for one that means harm.
  if (!bytes.empty() && weight > limits.xmlWeight + limits.xmlWeightPerByte * bytes.size())
    bytes = makeZip(entries, false);
  return bytes.empty() ? "was not written: there is not enough memory; close other programs and try again"
                       : std::string();
}

std::string whyNotSaved(std::string_view xml, const PackageLimits& limits) {
  if (xml.size() > limits.partBytes)
    return "was not written because it is too large to be opened again; end its name with .vsdx";
  return std::string(measureXml(xml).depth > deepestElement ? tooDeep : std::string_view());
}

}  // namespace quorvel::formats
