#include "hyperlinks/page_rename.h"

#include <string>
#include <string_view>

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
  PageRename(dsrVisioConnect& connect, const Page& page, std::string name, std::string oldName)
      : connect_(connect), page_(page), name_(std::move(name)), oldName_(std::move(oldName)) {}

  /// False when the user refused.
  bool renameAll() {
    for (const Page& page : everyPage(askAgain([&] { return page_.Document(); }))) {
      for (const Shape& shape : everyShape(page)) {
        if (!renameIn(shape)) return false;
      }
    }
    return true;
  }

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
      if (target.page == oldName_) {
        if (!agrees()) return false;
        rename(link, target.taskId);
      }
      if (askAgain([&] { return link.Address(); }) == oldName_) {
        if (!agrees()) return false;
        askAgain([&] { return link.SetAddress(name_); });
      }
    }
    return true;
  }

  void rename(const Hyperlink& link, const std::string& taskId) const {
    const auto named = [&](const std::string& page) { return taskId.empty() ? page : subAddressOf(page, taskId); };
    askAgain([&] { return link.SetSubAddress(named(name_)); });
    // A description of the user's own is left alone.
    if (askAgain([&] { return link.Description(); }) == named(oldName_))
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
    return agreed_;
  }

  dsrVisioConnect& connect_;
  const Page page_;
  const std::string name_, oldName_;
  bool agreed_ = false;
};

}  // namespace

void gvsoApp_PageChanged(dsrVisioConnect& connect, const Page& page) {
  const Maybe<std::string> name = askAgain([&] { return page.Name(); });
  if (!name) return;
  if (name->find_first_of(forbiddenCharacters) != std::string::npos) {
    connect.platform.showMessage(
        {.text = "A Quorvel page name cannot contain the following characters: /  ?  &  <  >. Please change the name "
                 "of this page."});
  }
  const Shape sheet = askAgain([&] { return page.PageSheet(); });
  if (!(askAgain([&] { return sheet.CellExists(schema::pageCells::name, 0); }) == true)) return;
  const Cell held = askAgain([&] { return sheet.Cells(schema::pageCells::name); });
  const Maybe<std::string> oldName = askAgain([&] { return held.ResultStr(visio::unitsNone); });
  // Links within the drawing have an empty address, which is no name of a page.
  if (oldName && !oldName->empty()) PageRename(connect, page, *name, *oldName).renameAll();
  askAgain([&] { return held.FormulaForce(quoted(*name)); });
}

}  // namespace quorvel::addin
