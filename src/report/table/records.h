// The shapes that a report has rows for, and the values that are read from them.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/sheet/store.h"
#include "report/definition/definition.h"
#include "report/process_map.h"
#include "report/table/table.h"

namespace quorvel::report {

/// One row before it is formatted: a shape, with an entry where each entry has a row.
struct Record {
  Subject subject = Subject::Tasks;
  std::size_t page = 0;
  host::SheetId sheet;  ///< null for a shape that was deleted while the map was read
  /// The one of the subject; null for other shapes.
  const Task* task = nullptr;
  const TaskLink* link = nullptr;
  const ProcessConnector* connector = nullptr;
  const Hyperlink* hyperlink = nullptr;
  std::string entry;
  Entry entryKind = Entry::Role;
  bool isResponsible = false;
};

/// Reads a drawing for one report. The store must not change meanwhile.
class RecordReader {
 public:
  RecordReader(const host::Store& store, host::DocumentId document);

  /// Those of the pages that the definition names, or of `onlyPage`; empty for a page that does not exist. A Task
  /// without an entry of the wanted kinds has one record.
  std::vector<Record> records(const Definition& definition, const std::string& onlyPage) const;
  bool hasPage(const std::string& name) const;
  TableCell value(const Record& record, const ReportValue& value) const;

 private:
  void addRecords(std::size_t page, Subject subject, const std::vector<Entry>& entries,
                  std::vector<Record>& records) const;
  std::string text(const Record& record, Field field) const;
  TableCell cellOf(const Record& record, const ReportValue& value) const;
  /// Folded names of the shapes on a page; none for a page that does not exist.
  const std::set<std::string>& shapesOf(const std::string& page) const;
  std::string targetExists(const std::string& address, const std::string& subAddress) const;

  const host::Store& store_;
  const host::Document& document_;
  ProcessMap map_;
  std::set<std::string> taskIds_, pages_;  ///< folded
  mutable std::map<std::string, std::set<std::string>> shapes_;
};

}  // namespace quorvel::report
