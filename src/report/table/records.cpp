#include "report/table/records.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/formula/units.h"
#include "host/sheet/inheritance.h"

namespace quorvel::report {
namespace {

constexpr std::string_view yes = "Yes", no = "No", elsewhere = "Elsewhere", noTarget = "No target";

/// Lists are stored with ";" between their entries.
std::vector<std::string> entriesIn(const std::string& list) {
  std::vector<std::string> entries;
  for (const std::string_view entry : splitAt(list, ';')) {
    if (!trimmed(entry).empty()) entries.emplace_back(trimmed(entry));
  }
  return entries;
}

std::string joined(const std::vector<std::string>& entries) {
  std::string text;
  for (const std::string& entry : entries) text += (text.empty() ? "" : ", ") + entry;
  return text;
}

std::string_view kindOf(Subject subject) {
  switch (subject) {
    case Subject::Tasks:
      return "Task";
    case Subject::Links:
      return "Task Link";
    case Subject::Connectors:
      return "Process Connector";
    case Subject::Hyperlinks:
      return "Hyperlink";
    case Subject::Shapes:
      break;
  }
  return "Shape";
}

std::string_view kindOf(const Record& record) {
  if (record.entry.empty()) return {};
  if (record.entryKind == Entry::Guideline) return "Guideline";
  if (record.entryKind == Entry::Resource) return "Resource";
  return record.isResponsible ? "Responsible" : "Supporting";
}

bool hasShapeData(const host::Store& store, host::SheetId shape) {
  const host::Column invisible = host::columnOf(host::SectionNumber::Property, "Invisible").or_(0);
  return std::ranges::any_of(host::rowsOf(store, shape, host::SectionNumber::Property), [&](const host::RowView& row) {
    return host::cellNumber(store, shape, {host::SectionNumber::Property, row.key, invisible}) == 0;
  });
}

/// Durations are divided and multiplied on their way, which must not show.
double rounded(double number) {
  const double scaled = number * 1e9;
  return std::abs(scaled) < 1e15 ? std::round(scaled) / 1e9 : number;
}

}  // namespace

RecordReader::RecordReader(const host::Store& store, host::DocumentId document)
    : store_(store), document_(*store.document(document)), map_(readProcessMap(store, document)) {
  for (const MapPage& page : map_.pages) {
    pages_.insert(foldCase(page.name));
    for (const Task& task : page.tasks) taskIds_.insert(foldCase(task.id));
  }
}

bool RecordReader::hasPage(const std::string& name) const { return pages_.contains(foldCase(name)); }

std::vector<Record> RecordReader::records(const Definition& definition, const std::string& onlyPage) const {
  const std::string& page = onlyPage.empty() ? definition.page : onlyPage;
  std::vector<Record> records;
  for (std::size_t i = 0; i < map_.pages.size(); ++i) {
    const bool isWanted = page.empty() ? definition.withBackgrounds || !map_.pages[i].background
                                       : equalIgnoringCase(map_.pages[i].name, page);
    if (!isWanted) continue;
    for (const Subject subject : definition.subjects) addRecords(i, subject, definition.entries, records);
  }
  return records;
}

void RecordReader::addRecords(std::size_t pageIndex, Subject subject, const std::vector<Entry>& entries,
                              std::vector<Record>& records) const {
  const MapPage& mapPage = map_.pages[pageIndex];
  const host::Page& page = *store_.page(document_.pages[pageIndex]);
  Record record;
  record.subject = subject;
  record.page = pageIndex;
  const auto add = [&](int shapeId) {
    const auto shape = page.byShapeId.find(shapeId);
    record.sheet = shape == page.byShapeId.end() ? host::SheetId() : shape->second;
    records.push_back(record);
  };
  switch (subject) {
    case Subject::Tasks:
      for (const Task& task : mapPage.tasks) {
        record.task = &task;
        const std::size_t before = records.size();
        for (const Entry kind : entries) {
          record.entryKind = kind;
          std::vector<std::string> texts = kind == Entry::Role        ? task.supportingRoles
                                           : kind == Entry::Guideline ? entriesIn(task.guidelines)
                                                                      : entriesIn(task.resources);
          const bool hasResponsible = kind == Entry::Role && !task.responsibleRole.empty();
          if (hasResponsible) texts.insert(texts.begin(), task.responsibleRole);
          for (std::size_t i = 0; i < texts.size(); ++i) {
            record.entry = std::move(texts[i]);
            record.isResponsible = hasResponsible && i == 0;
            add(task.shape.shapeId);
          }
        }
        record.entry.clear();
        if (records.size() == before) add(task.shape.shapeId);
      }
      break;
    case Subject::Links:
      for (const TaskLink& link : mapPage.links) {
        record.link = &link;
        add(link.shape.shapeId);
      }
      break;
    case Subject::Connectors:
      for (const ProcessConnector& connector : mapPage.connectors) {
        record.connector = &connector;
        add(connector.shape.shapeId);
      }
      break;
    case Subject::Hyperlinks:
      for (const Hyperlink& hyperlink : mapPage.hyperlinks) {
        record.hyperlink = &hyperlink;
        add(hyperlink.ownerId);
      }
      break;
    case Subject::Shapes:
      for (const host::SheetId top : page.shapes) {
        for (const host::SheetId shape : store_.subtree(top)) {
          if (hasShapeData(store_, shape)) add(store_.sheet(shape)->shapeId);
        }
      }
      break;
  }
}

TableCell RecordReader::value(const Record& record, const ReportValue& value) const {
  if (value.field == Field::Cell) return cellOf(record, value);
  return {text(record, value.field), {}};
}

TableCell RecordReader::cellOf(const Record& record, const ReportValue& value) const {
  if (!record.sheet) return {};
  const host::CellKey key = host::keyByLocalName(store_, record.sheet, value.cell);
  if (!host::cellExists(store_, record.sheet, key, false)) return {};
  const host::Value read = host::cellValue(store_, record.sheet, key);
  if (value.format == ValueFormat::Text) return {read.asText(), {}};
  const Maybe<host::Value> quantity = read.asQuantity();
  if (!quantity || !std::isfinite(quantity->internal())) return {read.asText(), {}};
  if (value.format == ValueFormat::Number) {
    // A length in millimetres is that number of millimetres.
    const double number = rounded(host::fromInternal(quantity->internal(), quantity->unit()));
    return {fixedNumber(number, 9), number};
  }
  if (quantity->internal() <= 0) return {};
  if (host::dimensionOf(quantity->unit()) != host::Dimension::ElapsedTime) return {read.asText(), {}};
  const auto unit = host::unitOfSuffix(value.unit->suffix);
  const double number = rounded(host::fromInternal(quantity->internal(), unit.or_(host::Unit::ElapsedMinute)));
  return {fixedNumber(number, 9), number};
}

std::string RecordReader::text(const Record& record, Field field) const {
  switch (field) {
    case Field::Page:
      return map_.pages[record.page].name;
    case Field::Id:
      if (record.task) return record.task->id;
      if (record.connector) return record.connector->shownId;
      if (record.hyperlink) return record.hyperlink->owner;
      if (record.link) return {};
      return record.sheet ? labelOfShape(store_, record.sheet) : std::string();
    case Field::Name:
      return record.sheet ? store_.shapeName(*store_.sheet(record.sheet)) : std::string();
    case Field::Kind:
      return std::string(kindOf(record.subject));
    case Field::Description:
      return record.task        ? record.task->description
             : record.link      ? record.link->description
             : record.hyperlink ? record.hyperlink->description
                                : std::string();
    case Field::From:
      return record.link ? record.link->from.label : record.hyperlink ? record.hyperlink->owner : std::string();
    case Field::To:
      if (record.link) return record.link->to.label;
      if (record.connector) return hyperlinkTarget(record.connector->address, record.connector->subAddress);
      return record.hyperlink ? hyperlinkTarget(record.hyperlink->address, record.hyperlink->subAddress)
                              : std::string();
    case Field::TargetExists:
      if (record.link) return std::string(record.link->to.kind == LinkEnd::Kind::Loose ? noTarget : yes);
      if (record.connector) return targetExists(record.connector->address, record.connector->subAddress);
      return record.hyperlink ? targetExists(record.hyperlink->address, record.hyperlink->subAddress) : std::string();
    case Field::SupportingRoles:
      return record.task ? joined(record.task->supportingRoles) : std::string();
    case Field::Guidelines:
      return record.task ? joined(entriesIn(record.task->guidelines)) : std::string();
    case Field::Resources:
      return record.task ? joined(entriesIn(record.task->resources)) : std::string();
    case Field::Entry:
      return record.entry;
    case Field::EntryKind:
      return std::string(kindOf(record));
    case Field::EntryLetter:
      return std::string(kindOf(record).substr(0, 1));
    case Field::Cell:
      break;
  }
  return {};
}

const std::set<std::string>& RecordReader::shapesOf(const std::string& page) const {
  const auto [shapes, isNew] = shapes_.try_emplace(foldCase(page));
  const host::PageId id = isNew ? store_.pageNamed(document_.id, page) : host::PageId();
  if (id) {
    for (const host::SheetId shape : store_.page(id)->shapes)
      shapes->second.insert(foldCase(store_.shapeName(*store_.sheet(shape))));
  }
  return shapes->second;
}

/// A hyperlink names a Task by its ID behind the page's name; only the ID is compared, as when the link follows the
/// Task.
std::string RecordReader::targetExists(const std::string& address, const std::string& subAddress) const {
  if (address.empty() && subAddress.empty()) return std::string(noTarget);
  const bool isHere = address.empty() || equalIgnoringCase(address, document_.name) ||
                      equalIgnoringCase(address, document_.path + document_.name);
  if (!isHere) return std::string(elsewhere);
  if (subAddress.empty()) return std::string(yes);
  const std::size_t slash = std::min(subAddress.find('/'), subAddress.size());
  const std::string page = subAddress.substr(0, slash);
  const std::string shape = slash < subAddress.size() ? subAddress.substr(slash + 1) : std::string();
  if (shape.empty()) return std::string(hasPage(page) ? yes : no);
  if (taskIds_.contains(foldCase(shape))) return std::string(yes);
  return std::string(shapesOf(page).contains(foldCase(shape)) ? yes : no);
}

}  // namespace quorvel::report
