#include "hyperlinks/link_rows.h"

#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"
#include "sheets/page_walk.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

using namespace linkColumns;

/// A text of the link. Rows replace the links that they were read from, so a refused call is repeated.
template <class Read>
std::string textOf(Read read) {
  return askAgain(read).or_({});
}

/// What a record and its document tell about the path of a link.
void setPaths(LinkRow& row, const Document& document, const std::string& relOrAbs, const std::string& path,
              const std::string& name) {
  if (relOrAbs != pathKinds::relative && relOrAbs != pathKinds::absolute) return;
  row[linkColumns::relOrAbs] = relOrAbs;
  row[absolutePath] = path;
  row[relativePath] = get_relative_path_to(textOf([&] { return document.Path(); }), path);
  row[documentName] = name;
}

struct Record {
  explicit Record(const std::string& text)
      : kind(getTypeOfHyperLink("hyperLinkType", text)),
        relOrAbs(getTypeOfHyperLink("relOrAbs", text)),
        absPath(getTypeOfHyperLink("absPath", text)),
        docName(getTypeOfHyperLink("docName", text)) {}
  std::string kind, relOrAbs, absPath, docName;
};

void readTask(LinkRow& row, const Hyperlink& link, const Document& document, const Record& record) {
  const std::string address = textOf([&] { return link.Address(); }), name = textOf([&] { return document.Name(); });
  row[location] = address.empty() ? name : address;
  const std::string subAddress = textOf([&] { return link.SubAddress(); });
  row[page] = getSubAdd("pageName", subAddress);
  if (subAddress.find('/') != std::string::npos) row[task] = getSubAdd("taskName", subAddress);
  row[zoom] = textOf([&] { return link.ExtraInfo(); });
  // The path in the record of a link in this drawing may be that of a former place of the file.
  if (address.empty()) {
    setPaths(row, document, std::string(pathKinds::relative), fullPathOf(document), name);
  } else {
    setPaths(row, document, record.relOrAbs, record.relOrAbs == pathKinds::absolute ? address : record.absPath,
             record.docName);
  }
}

}  // namespace

std::vector<LinkRow> readLinks(const Shape& shape, const Document& document, bool offersRelative) {
  std::vector<LinkRow> rows;
  for (const Hyperlink& link : everyHyperlink(shape)) {
    const Record record(textOf([&] { return link.Frame(); }));
    LinkRow row;
    row[description] = textOf([&] { return link.Description(); });
    row[location] = textOf([&] { return link.Address(); });
    row[newWindow] = askAgain([&] { return link.NewWindow(); }) == true ? "True" : "False";
    row[kind] = record.kind;
    row[state] = linkStates::read;
    if (record.kind == linkKinds::task) {
      readTask(row, link, document, record);
    } else if (record.kind == linkKinds::document) {
      const std::vector<std::string> parts = parse(row[location], "#");
      row[location] = slot(parts, 0).or_({});
      row[page] = slot(parts, 1).or_({});
      setPaths(row, document, record.relOrAbs, record.absPath, record.docName);
    } else if (record.kind == linkKinds::program) {
      row[newWindow].clear();
      if (offersRelative) {
        setPaths(row, document, record.relOrAbs, record.absPath, record.docName);
      } else {
        row[relOrAbs] = pathKinds::relative;
        row[absolutePath] = record.absPath;
        row[documentName] = record.docName;
      }
    } else if (record.kind == linkKinds::webPage) {
      row[page] = textOf([&] { return link.SubAddress(); });
    } else if (record.kind != linkKinds::email) {
      continue;
    }
    rows.push_back(row);
  }
  return rows;
}

}  // namespace quorvel::addin
