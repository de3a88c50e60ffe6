#include "cli/sample_map.h"

#include <map>

#include "base/basic_text.h"
#include "base/text.h"
#include "cli/open_drawing.h"

namespace quorvel::cli {
namespace {

constexpr const char *leftPoint = "Connections.X1", *rightPoint = "Connections.X2";
constexpr int subTaskBox = 3;

class SampleMaker {
 public:
  SampleMaker(Application app, Document map) : app_(app), map_(map) {}

  bool make() {
    // The pages are made first: links on one refer to Tasks on another.
    std::vector<Page> pages;
    for (const SamplePage& page : orderHandling()) {
      pages.push_back(pages.empty() ? map_.Pages().Item(1) : map_.Pages().Add());
      need(pages.back().SetName(page.name), "name the page " + page.name);
    }
    write(map_.DocumentSheet(), "User.RoleNames", orderHandlingRoles());
    for (std::size_t i = 0; i < pages.size(); ++i) fill(pages[i], orderHandling()[i]);
    need(app_.ActiveWindow().SetPage(pages.front()), "show the first page");
    return failed_.empty();
  }
  const std::string& failed() const { return failed_; }

 private:
  void fill(const Page& page, const SamplePage& contents) {
    writeTitle(page, contents.title);
    std::map<std::string, Shape> ends;
    for (const SampleTask& task : contents.tasks) {
      const Shape shape = dropTask(page, task);
      ends[shape.Cells("Prop.Task_ID").ResultStr(0).or_({})] = shape;
    }
    for (const SampleConnector& connector : contents.connectors)
      ends[connector.end.empty() ? ">" + connector.task : connector.end] = dropConnector(page, connector);
    for (const SampleLink& link : contents.links) dropLink(page, link, ends[link.from], ends[link.to]);
    need(app_.ActiveWindow().DeselectAll(), "select nothing");
  }

  void writeTitle(const Page& page, const std::string& title) {
    for (const Shape& shape : page.Shapes().all())
      if (shape.Text() == "Page Title") need(shape.SetText(title), "write the title");
  }

  Shape drop(const Page& page, const char* master, const Place& place) {
    const Shape shape = page.Drop(map_.Masters().Item(master), place.x, place.y);
    need(bool(shape), std::string("drop a ") + master);
    return shape;
  }

  Shape dropTask(const Page& page, const SampleTask& task) {
    const Shape shape = drop(page, "Task", task.place);
    write(shape, "Prop.Task_Description", task.description);
    write(shape, "Prop.Responsible_Role", task.responsible);
    for (std::size_t n = 0; n < task.supporting.size(); ++n)
      write(shape, "Prop.SupportingRole_" + std::to_string(n + 1), task.supporting[n]);
    write(shape, "Prop.Time_Units", task.timeUnits);
    need(shape.Cells("Prop.Task_Completion_Time").SetFormula(shortestNumber(task.time)), "enter a time");
    write(shape, "Prop.Frequency_Of_Occurrence", task.frequency);
    write(shape, "Prop.Guidelines", task.guidelines);
    write(shape, "Prop.Resources", task.resources);
    write(shape, "Prop.Notes", task.notes);
    if (!task.opensTask.empty()) addTaskHyperlink(shape.Shapes().Item(subTaskBox), task.opensPage, task.opensTask);
    return shape;
  }

  Shape dropConnector(const Page& page, const SampleConnector& connector) {
    const Shape shape = drop(page, "Process Connector", connector.place);
    addTaskHyperlink(shape, connector.page, connector.task);
    return shape;
  }

  void dropLink(const Page& page, const SampleLink& link, const Shape& from, const Shape& to) {
    const Shape shape = drop(page, "Task Link", {5.5, 0.5});
    need(shape.Cells("BeginX").GlueTo(from.Cells(rightPoint)), "glue a Task Link to " + link.from);
    need(shape.Cells("EndX").GlueTo(to.Cells(leftPoint)), "glue a Task Link to " + link.to);
    write(shape, "Prop.Task_Link", link.description);
  }

  void addTaskHyperlink(const Shape& shape, const std::string& page, const std::string& task) {
    const Hyperlink link = shape.AddHyperlink();
    need(link.SetDescription(task + " on page " + page), "describe a hyperlink");
    need(link.SetSubAddress(page + "/" + task), "aim a hyperlink");
    // The record of the link's kind; its path is that of this very drawing.
    need(link.SetFrame("Task+Rel++"), "mark a hyperlink");
  }

  void write(const Shape& sheet, const std::string& cell, const std::string& value) {
    if (!value.empty()) need(sheet.Cells(cell).SetFormula(quoted(value)), "write " + cell);
  }

  /// Keeps the first step that failed.
  void need(bool done, const std::string& step) {
    if (!done && failed_.empty()) failed_ = step;
  }

  Application app_;
  Document map_;
  std::string failed_;
};

}  // namespace

Document makeSampleMap(Session& session, std::string& error) {
  session.platform().onForm = [](Form& form) {
    // The dialog already shows the letters: the first ones of the page's name.
    if (Control* number = form.find("txtTaskNumber")) number->type("1");
    if (Control* ok = form.find("BtnOK")) ok->click();
  };
  const Document map = newMap(session, error);
  if (!map) return {};
  SampleMaker maker(session.app(), map);
  if (!maker.make()) {
    error =
        "The sample map could not be made: a step failed (" + maker.failed() + "); is the template of this release?";
    return {};
  }
  host::DocumentProperties& properties =
      session.engine().edit().documentFields(host::DocumentId{map.ref().id}).properties;
  properties.title = "Order handling";
  properties.creator = "Quorvel";
  return map;
}

}  // namespace quorvel::cli
