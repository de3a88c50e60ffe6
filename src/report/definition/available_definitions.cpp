#include "report/definition/available_definitions.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"
#include "report/definition/read_definition.h"
#include "schema/cells.h"

namespace quorvel::report {
namespace {

namespace fs = std::filesystem;

/// 0 for a text that is no number from 1 on.
int numberIn(std::string_view text) {
  int number = 0;
  const auto [end, wrong] = std::from_chars(text.data(), text.data() + text.size(), number);
  return wrong == std::errc() && end == text.data() + text.size() && number > 0 ? number : 0;
}

AvailableDefinition read(int number, std::string_view xml, const std::string& where) {
  ReadDefinition read = readDefinition(xml);
  AvailableDefinition definition{number, std::move(read.definition), {}};
  if (!read.problem.empty()) definition.problem = where + " can't be used: " + read.problem + ".";
  return definition;
}

/// The text of a cell is UTF-8, whatever the declaration that was copied from a file says.
std::string_view withoutDeclaration(std::string_view xml) {
  xml = trimmed(xml);
  const std::size_t end = xml.starts_with("<?xml") ? xml.find("?>") : std::string_view::npos;
  return end == std::string_view::npos ? xml : xml.substr(end + 2);
}

std::vector<AvailableDefinition> definitionsIn(const host::Store& store, host::SheetId sheet) {
  std::vector<AvailableDefinition> definitions;
  const host::Column value = host::columnOf(host::SectionNumber::User, "Value").or_(0);
  for (const host::RowView& row : host::rowsOf(store, sheet, host::SectionNumber::User)) {
    const std::string_view name = host::spelling(row.name), start = schema::documentCells::reportRows.name();
    if (!startsWithIgnoringCase(name, start)) continue;
    const int number = numberIn(name.substr(start.size()));
    if (number == 0) continue;
    const std::string xml = host::cellText(store, sheet, {host::SectionNumber::User, row.key, value});
    definitions.push_back(
        read(number, withoutDeclaration(xml), "The report definition in the document's row User." + std::string(name)));
  }
  std::ranges::stable_sort(definitions, {}, &AvailableDefinition::number);
  return definitions;
}

std::vector<AvailableDefinition> definitionsIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
    std::error_code unreadable;
    if (entry->is_regular_file(unreadable)) files.push_back(entry->path());
  }
  std::ranges::sort(files, {}, [](const fs::path& file) { return file.filename().string(); });
  std::vector<AvailableDefinition> definitions;
  for (const fs::path& file : files) {
    definitions.push_back(definitionInFile(file.string()));
    definitions.back().number = static_cast<int>(definitions.size());
  }
  return definitions;
}

std::string titlesOf(const AvailableDefinitions& available) {
  std::string titles;
  for (const AvailableDefinition& each : available.definitions) {
    if (each.problem.empty()) titles += (titles.empty() ? "" : ", ") + each.definition.title;
  }
  return titles;
}

}  // namespace

AvailableDefinitions definitionsFor(const host::Store& store, host::DocumentId document,
                                    const std::string& installFolder) {
  AvailableDefinitions available{definitionsIn(store, store.document(document)->sheet), false};
  if (!available.definitions.empty()) return available;
  return {
      installFolder.empty() ? std::vector<AvailableDefinition>() : definitionsIn(fs::path(installFolder) / "Reports"),
      true};
}

AvailableDefinition definitionInFile(const std::string& fileName) {
  AvailableDefinition definition;
  const std::string where = "The report definition " + fileName;
  std::error_code error;
  if (!fs::is_regular_file(fileName, error)) {
    definition.problem = where + " is no file.";
    return definition;
  }
  std::ifstream file(fileName, std::ios::binary);
  std::string xml(largestDefinition + 1, '\0');
  file.read(xml.data(), static_cast<std::streamsize>(xml.size()));
  if (file.bad() || !file.is_open()) {
    definition.problem = where + " can't be read.";
    return definition;
  }
  xml.resize(static_cast<std::size_t>(file.gcount()));
  return read(0, xml, where);
}

AvailableDefinition definitionNamed(const AvailableDefinitions& available, const std::string& name) {
  const auto& all = available.definitions;
  const auto titled = std::ranges::find_if(
      all, [&](const AvailableDefinition& each) { return equalIgnoringCase(each.definition.title, trimmed(name)); });
  if (titled != all.end()) return *titled;
  const auto numbered = std::ranges::find(all, numberIn(name), &AvailableDefinition::number);
  if (numbered != all.end()) return *numbered;
  std::error_code error;
  if (fs::exists(name, error)) return definitionInFile(name);
  const std::string titles = titlesOf(available);
  AvailableDefinition none;
  none.problem = "There is no report \"" + name + "\"; " +
                 (titles.empty() ? "name a file with a report definition." : "there are: " + titles + ".");
  return none;
}

}  // namespace quorvel::report
