#include "hyperlinks/page_rename.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "hyperlinks/link_record.h"
#include "links/link_target.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

constexpr std::string_view forbiddenCharacters = "?><&/";

class PageRename {
 public:
  /// `oldName` is the name that links were last brought up to date for.
  PageRename(dsrVisioConnect& connect, const Page& page, std::string name, std::string oldName)
      : connect_(connect), page_(page), name_(std::move(name)), oldNames_{std::move(oldName)} {}

  /// False when the user refused. A handler may rename the page meanwhile; then the links follow once more.
  bool renameAll() {
    for (;;) {
      for (const Page& page : everyPage(askAgain([&] { return page_.Document(); }))) {
        for (const Shape& shape : everyShape(page)) {
          if (!renameIn(shape)) return false;
        }
      }
      const std::string former = name_;
      if (!takesNewName()) return true;
      oldNames_.push_back(former);
    }
  }

  const std::string& name() const { return name_; }

 private:
  bool renameIn(const Shape& shape) {
    const bool isTask = askAgain([&] { return IsTask(shape); });
    if (!isTask && !askAgain([&] { return IsProcessConnector(shape); })) return true;
    if (!renameLinksOf(shape)) return false;
    if (!isTask) return true;
    for (const Shape& member : everyMember(shape)) {
      const Maybe<std::string> mark = askAgain([&] { return member.Data1(); });
      if ((mark == marks::detail || mark == marks::subTaskBox) && !renameLinksOf(member)) return false;
    }
    return true;
  }

  bool renameLinksOf(const Shape& shape) {
    for (const Hyperlink& link : everyHyperlink(shape)) {
      const std::string address = askAgain([&] { return link.SubAddress(); }).or_({});
      const LinkTarget target = linkTarget(getPageTaskNamWithSpace(address));
      if (isNameOf(target.page) && !leadsElsewhere(link, askAgain([&] { return page_.Document(); }))) {
        if (!agrees()) return false;
        rename(link, target);
      }
      if (const Maybe<std::string> other = askAgain([&] { return link.Address(); }); other && isNameOf(*other)) {
        if (!agrees()) return false;
        askAgain([&] { return link.SetAddress(name_); });
      }
    }
    return true;
  }

  /// A name that the page had. Also the one that it has, as long as the user was not asked.
  bool isNameOf(const std::string& text) const {
    return !text.empty() && std::ranges::find(oldNames_, text) != oldNames_.end() && !(agreed_ && text == name_);
  }

  void rename(const Hyperlink& link, const LinkTarget& target) const {
    const auto named = [&](const std::string& page) {
      return target.taskId.empty() ? page : subAddressOf(page, target.taskId);
    };
    askAgain([&] { return link.SetSubAddress(named(name_)); });
    // A description of the user's own is left alone.
    if (askAgain([&] { return link.Description(); }) == named(target.page))
      askAgain([&] { return link.SetDescription(named(name_)); });
  }

  /// Asks the first time.
  bool agrees() {
    if (agreed_) return true;
    agreed_ = connect_.platform.showMessage(
                  {.text = "There are active hyperlinks to this page and you have changed the name of the page to \"" +
                           name_ + "\". Would you like to update the hyperlinks with the new page name?",
                   .buttons = MessageButtons::YesNoCancel,
                   .icon = MessageIcon::Question}) == MessageAnswer::Yes;
    if (agreed_) takesNewName();
    return agreed_;
  }

  /// True when the page was renamed again.
  bool takesNewName() {
    const Maybe<std::string> name = askAgain([&] { return page_.Name(); });
    if (!name || *name == name_) return false;
    name_ = *name;
    return true;
  }

  dsrVisioConnect& connect_;
  const Page page_;
  std::string name_;
  std::vector<std::string> oldNames_;
  bool agreed_ = false;
};

/// While it lives, a rename of the page by a handler is left to the rename that is under way.
class Renaming {
 public:
  Renaming(dsrVisioConnect& connect, const Page& page) : connect_(connect), outer_(connect.renamedPage) {
    connect.renamedPage = page;
  }
  ~Renaming() { connect_.renamedPage = outer_; }
  Renaming(const Renaming&) = delete;
  Renaming& operator=(const Renaming&) = delete;

 private:
  dsrVisioConnect& connect_;
  const Page outer_;
};

}  // namespace

void gvsoApp_PageChanged(dsrVisioConnect& connect, const Page& page) {
  const Maybe<std::string> name = askAgain([&] { return page.Name(); });
  if (!name || connect.renamedPage == page) return;
  if (name->find_first_of(forbiddenCharacters) != std::string::npos) {
    connect.platform.showMessage(
        {.text = "A Quorvel page name cannot contain the following characters: /  ?  &  <  >. Please change the name "
                 "of this page."});
  }
  // A "/" stands between page and Task: links to such a name would lead to a Task that is a part of it. They keep the
  // old name until the page has another one.
  if (name->find('/') != std::string::npos) return;
  const Shape sheet = askAgain([&] { return page.PageSheet(); });
  if (!(askAgain([&] { return sheet.CellExists(schema::pageCells::name, 0); }) == true)) return;
  const Cell held = askAgain([&] { return sheet.Cells(schema::pageCells::name); });
  const Maybe<std::string> oldName = askAgain([&] { return held.ResultStr(visio::unitsNone); });
  std::string newName = *name;
  // Links within the drawing have an empty address, which is no name of a page.
  if (oldName && !oldName->empty()) {
    const Renaming renaming(connect, page);
    PageRename rename(connect, page, *name, *oldName);
    rename.renameAll();
    newName = rename.name();
  }
  askAgain([&] { return held.FormulaForce(quoted(newName)); });
}

}  // namespace quorvel::addin
