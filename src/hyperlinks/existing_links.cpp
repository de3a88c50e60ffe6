#include "hyperlinks/existing_links.h"

#include <set>

#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

/// What two links have in common when they are shown once.
using Key = std::vector<std::string>;

class Collection {
 public:
  Collection(const Document& document, std::string_view kind)
      : name_(document.Name().or_({})), fullPath_(fullPathOf(document)), kind_(kind) {}

  void addLinksOf(const Shape& shape) {
    for (const Hyperlink& link : everyHyperlink(shape)) {
      const std::string record = link.Frame().or_({});
      if (getTypeOfHyperLink("hyperLinkType", record) == kind_) add(link, record);
    }
  }

  std::vector<ExistingLink> links;

 private:
  void add(const Hyperlink& link, const std::string& record) {
    const std::string address = link.Address().or_({}), subAddress = link.SubAddress().or_({});
    const std::string relOrAbs = getTypeOfHyperLink("relOrAbs", record);
    const bool isTask = kind_ == linkKinds::task, isDocument = kind_ == linkKinds::document;
    ExistingLink made;
    made.location = address;
    made.description = link.Description().or_({});
    made.relOrAbs = relOrAbs == pathKinds::absolute ? "A" : relOrAbs == pathKinds::relative ? "R" : "";
    made.newWindow = link.NewWindow() == true ? "Y" : "N";
    made.absPath = getTypeOfHyperLink("absPath", record);
    made.docName = getTypeOfHyperLink("docName", record);
    // The address and the part in it that an equal link must have; in some cases not what is shown.
    std::string sameLocation = address, samePage;
    if (isTask) {
      if (address.empty()) {
        made.location = made.relOrAbs == "A" ? fullPath_ : made.relOrAbs == "R" ? name_ : std::string();
        sameLocation = fullPath_;
      }
      made.page = samePage = getSubAdd("pageName", subAddress);
      if (subAddress.find('/') != std::string::npos) made.task = getSubAdd("taskName", subAddress);
      made.zoom = link.ExtraInfo().or_({});
      if (made.zoom.empty()) made.zoom = defaultZoom;
    } else if (isDocument) {
      const std::size_t hash = address.find('#');
      made.location = sameLocation = address.substr(0, hash);
      if (hash != std::string::npos) made.page = samePage = address.substr(hash + 1);
    } else if (kind_ == linkKinds::webPage) {
      made.page = getSubAdd("pageName", subAddress);
      samePage = subAddress;
    }
    const auto key = [&](const std::string& location, const std::string& page) {
      Key all{location, made.description, page, made.task, made.zoom};
      if (kind_ != linkKinds::webPage && kind_ != linkKinds::email) all.push_back(made.relOrAbs);
      if (kind_ != linkKinds::program && kind_ != linkKinds::email) all.push_back(made.newWindow);
      return all;
    };
    const bool hasPath = isTask || isDocument || kind_ == linkKinds::program;
    // A record without either word is equal to no other.
    const bool comparable = !hasPath || !made.relOrAbs.empty();
    if (comparable && shown_.contains(key(sameLocation, samePage))) return;
    if (comparable) shown_.insert(key(made.location, made.page));
    links.push_back(std::move(made));
  }

  const std::string name_, fullPath_;
  const std::string_view kind_;
  std::set<Key> shown_;
};

}  // namespace

std::vector<ExistingLink> existingLinks(const Document& document, std::string_view kind) {
  Collection collection(document, kind);
  forEachShape(document, [&](const Shape& shape) {
    const bool isTask = IsTask(shape);
    if (!isTask && !IsProcessConnector(shape)) return;
    collection.addLinksOf(shape);
    if (!isTask) return;
    for (const Shape& member : everyMember(shape)) {
      const Maybe<std::string> mark = member.Data1();
      if (mark == marks::detail || mark == marks::subTaskBox) collection.addLinksOf(member);
    }
  });
  return std::move(collection.links);
}

}  // namespace quorvel::addin
