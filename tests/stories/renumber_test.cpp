// Renumbering Tasks: the dialog, the order of numbers, links that follow; and the same outcome as by numbering one Task
// after the other, on random maps.
#include <random>

#include "commands/renumber_tasks.h"
#include "dialogs/display_dialog.h"
#include "host/store_dump.h"
#include "links/process_connector.h"
#include "sheets/shape_classes.h"
#include "stories/details_fixture.h"

namespace quorvel {
namespace {

std::string targetOf(const Hyperlink& link) { return link.SubAddress().or_("?"); }

class Renumber : public DetailsTest {
 protected:
  Shape second, third;
  Page nextPage;

  void SetUp() override {
    DetailsTest::SetUp();
    second = dropTask(page, 6);
    third = dropTask(page, 9);
    nextPage = map.Pages().Add();
  }

  static std::string ids(const Page& page) {
    std::string all;
    for (const Shape& shape : page.Shapes().all()) {
      if (!addin::IsTask(shape)) continue;
      EXPECT_EQ(shape.Name(), text(shape, "Prop.Task_ID"));
      all += text(shape, "Prop.Task_ID") + " ";
    }
    return all;
  }
  Shape connectorTo(const Page& on, const std::string& subAddress) {
    const Shape connector = drop(on, "Process Connector", 5, 2);
    const Hyperlink link = connector.AddHyperlink();
    EXPECT_TRUE(link.SetSubAddress(subAddress));
    EXPECT_TRUE(link.SetDescription(subAddress));
    return connector;
  }
  void select(std::initializer_list<Shape> shapes) {
    app.ActiveWindow().SetPage(page);
    app.ActiveWindow().DeselectAll();
    for (const Shape& shape : shapes) app.ActiveWindow().Select(shape, visio::select);
  }
  /// Runs the command; what its dialog suggests, and then what `fill` does before OK.
  std::string suggested;
  void renumber(std::function<void(Form&)> fill = {}) {
    suggested = "no dialog";
    session.platform().onForm = [&](Form& form) {
      EXPECT_EQ(form.caption(), "Task Renumbering Options");
      suggested = form.find("txtTaskIdLetters")->text() + "|" + form.find("txtTaskNumber")->text() + "|" +
                  form.find("txtSuggestedTaskId")->text() +
                  (form.find("Option1")->isOn()   ? " selected"
                   : form.find("Option2")->isOn() ? " page"
                                                  : " none");
      if (fill) fill(form);
      if (form.isOpen()) form.find("Command2")->click();
    };
    addin::cbrBtnRenumberTasks_Click(session.addin());
  }
  std::string dump() { return StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id}); }
};

TEST_F(Renumber, APageOrASelectionInTheOrderOfItsShapes) {
  const Shape linked = connectorTo(nextPage, "AB Order entry/AB01"), oldText = connectorTo(page, "AB Order entry/AB03");
  ASSERT_TRUE(oldText.SetText("Connector.AB03"));
  const Shape box = third.Shapes().Item(3);
  ASSERT_TRUE(box.AddHyperlink().SetSubAddress("AB Order entry/AB02"));
  write(third, "Prop.Linked", "AB02");
  ASSERT_TRUE(task.BringToFront());  // placed first, but numbered last
  const Shape taskLink = drop(page, "Task Link", 4, 3);
  select({taskLink, task.Shapes().Item(4)});
  const std::string before = dump();
  renumber([](Form& form) {
    form.find("txtTaskIdLetters")->type("Q");
    form.find("txtTaskNumber")->type("17");
    EXPECT_EQ(form.find("txtSuggestedTaskId")->text(), "Q17");
  });
  EXPECT_EQ(suggested, "AB|02|AB02 page") << "the last two characters as they are, of the lowest Task";
  EXPECT_EQ(ids(page), "Q17 Q18 Q19 ");
  EXPECT_EQ(task.Name(), "Q19");
  EXPECT_EQ(number(page.PageSheet(), "User.Next_Task_Id"), 20);
  EXPECT_EQ(text(page.PageSheet(), "User.Task_Id_Letters"), "Q");
  EXPECT_EQ(targetOf(linked.Hyperlinks().Item(0)), "AB Order entry/Q19");
  EXPECT_EQ(linked.Hyperlinks().Item(0).Description(), "AB Order entry/Q19");
  EXPECT_EQ(text(linked, "Prop.Connecting_TaskID") + " " + linked.Name().or_({}), "Q19 Connector.Q19");
  EXPECT_EQ(targetOf(box.Hyperlinks().Item(0)), "AB Order entry/Q17");
  EXPECT_EQ(text(third, "Prop.Linked"), "Q17");
  const std::string after = dump();
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "") << "a command is one step";
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(after, dump()), "");
  for (const auto& [connector, id] : {std::pair(linked, "Q19"), std::pair(oldText, "Q18")}) {
    EXPECT_EQ(connector.Text(), std::string("Connector.") + id);
    connector.Cells("Prop.Connecting_TaskID").FormulaForce(quoted("typed"));
    EXPECT_EQ(connector.Text(), "Connector.typed") << "the text is a field, also where an older drawing had plain text";
    EXPECT_EQ(connector.Cells("Fields.Value[1]").Formula(), "Prop.Connecting_TaskID");
    connector.Cells("Prop.Connecting_TaskID").FormulaForce(quoted(id));
  }

  // In the order of selecting; the page's counter and letters remain, and equal IDs are accepted.
  select({taskLink, third, second});
  renumber();
  EXPECT_EQ(suggested, "AB|18|AB18 selected");
  EXPECT_EQ(text(third, "Prop.Task_ID") + text(second, "Prop.Task_ID") + text(task, "Prop.Task_ID"), "AB18AB19Q19");
  EXPECT_EQ(number(page.PageSheet(), "User.Next_Task_Id"), 20);
  EXPECT_EQ(text(page.PageSheet(), "User.Task_Id_Letters"), "Q");
}

TEST_F(Renumber, TheDialogCanBeRefused) {
  select({});
  const std::string before = dump();
  MessageAnswer reply = MessageAnswer::No;
  int asked = 0;
  session.platform().onMessage = [&](const MessageBox& box) {
    EXPECT_EQ(box.text, "Are you sure you want to cancel without saving the changes you have made?");
    ++asked;
    return reply;
  };
  renumber([&](Form& form) {
    form.find("Command1")->click();
    EXPECT_FALSE(form.isOpen()) << "nothing was changed";
  });
  renumber([&](Form& form) {
    form.find("txtTaskNumber")->setText("99999999999");
    form.find("Command2")->click();
    EXPECT_TRUE(form.isOpen()) << "too large for a Task";
    form.find("Command1")->click();
    EXPECT_TRUE(form.isOpen());
    reply = MessageAnswer::Yes;
    form.find("Command1")->click();
  });
  renumber([](Form& form) { form.close(); });
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(firstDifference(before, dump()), "");
  ASSERT_TRUE(nextPage.SetBackground(true));
  app.ActiveWindow().SetPage(nextPage);
  renumber();
  EXPECT_EQ(suggested, "no dialog") << "a background page";
}

/// A random map of two pages whose Tasks have equal letters, with all kinds of links.
class RandomMap {
 public:
  RandomMap(const Document& map, const Document& stencil, unsigned seed) : map(map), random_(seed) {
    pages = {map.Pages().Item(1), map.Pages().Add()};
    pages[0].SetName(std::string("A one"));
    pages[1].SetName(std::string("one"));  // the end of the other page's name
    for (int i = 0; i < 8; ++i) drop(stencil, "Task", i);
    for (int i = 0; i < 6; ++i) drop(stencil, "Process Connector", i);
    for (const Shape& task : tasks) {
      if (chance(8)) task.Cells("Prop.Guidelines").FormulaForce("\"Ask;Sign\"");
      task.Cells("Prop.Task_ID").FormulaForce("\"" + anyId() + "\"");
    }
    for (const Shape& task : tasks) {
      addLinks(task, 3);
      for (const Shape& member : task.Shapes().all()) {
        if (member.Data1() == "Pline" && member.Data2() == "controls") addLinks(member, 1);
      }
      addLinks(task.Shapes().Item(3), 2);
      if (chance(3)) task.Cells("Prop.Linked").FormulaForce("\"" + anyId() + "\"");
      if (chance(6)) task.SetName(anyId());
      if (chance(6)) task.Cells("Prop.Task_ID").FormulaForce("GUARD(\"" + anyId() + "\")");
    }
    for (const Shape& connector : connectors) {
      addLinks(connector, 2);
      if (chance(2)) connector.Cells("Prop.Connecting_TaskID").FormulaForce("\"" + anyId() + "\"");
      if (chance(3) && connector.CellExists("User.StoredTaskID", 1) == true)
        connector.DeleteRow(visio::sectionUser, connector.Cells("User.StoredTaskID").Row().or_(-1));
    }
    choose();
  }

  /// Which Tasks get which numbers.
  void choose() {
    target = {pages[at(2)], {}, {}};
    for (const Shape& task : tasks) {
      if (chance(2)) target.selected.insert(target.selected.begin() + at(target.selected.size() + 1), task);
    }
    if (!connectors.empty()) target.selected.push_back(connectors.front());
    scope = chance(2) ? addin::displayScope::page : addin::displayScope::selected;
    letters = chance(5) ? "B" : "A";
    number = chance(5) ? 100 : 1 + static_cast<long>(at(6));
  }

  Document map;
  std::vector<Page> pages;
  std::vector<Shape> tasks, connectors;
  addin::DisplayTarget target;
  std::string_view scope;
  std::string letters;
  long number = 1;

  /// All that renumbering may change.
  std::string contents() const {
    std::string out;
    const std::function<void(const Shape&)> add = [&](const Shape& shape) {
      out += shape.NameID().or_("?") + " " + shape.Name().or_("?") + " " + shape.Text().or_("?");
      for (const char* cell : {"Prop.Task_ID", "Prop.Linked", "Prop.Connecting_TaskID", "User.StoredTaskID",
                               "User.flag_pic_3", "Char.Size", "PinX"}) {
        if (shape.CellExists(cell, 0) == true)
          out += std::string(" ") + cell + "=" + shape.Cells(cell).Formula().or_("?") + ":" +
                 shape.Cells(cell).ResultStr(0).or_("?");
      }
      for (const Hyperlink& link : shape.Hyperlinks().all())
        out +=
            " [" + link.SubAddress().or_("?") + "|" + link.Description().or_("?") + "|" + link.Address().or_("?") + "]";
      out += "\n";
      for (const Shape& member : shape.Shapes().all()) add(member);
    };
    for (const Page& page : pages) {
      for (const Shape& shape : page.Shapes().all()) add(shape);
    }
    return out;
  }

 private:
  std::size_t at(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_); }
  bool chance(std::size_t one) { return at(one) == 0; }
  std::string anyId() {
    static const char* const some[] = {"A1", "A10", "A100", "Z99", "A0", "B03"};
    return chance(3) ? some[at(std::size(some))] : plainId(1 + at(8));
  }
  static std::string plainId(std::size_t number) { return (number < 10 ? "A0" : "A") + std::to_string(number); }
  std::string anyPage() { return pages[at(2)].Name().or_({}); }
  void drop(const Document& stencil, const char* master, int place) {
    const Shape shape = pages[at(2)].Drop(stencil.Masters().Item(master), 2 + place * 3, 4);
    if (shape) (std::string(master) == "Task" ? tasks : connectors).push_back(shape);
  }
  void addLinks(const Shape& shape, std::size_t most) {
    for (std::size_t n = at(most + 1); n > 0; --n) {
      const Hyperlink link = shape.AddHyperlink();
      std::string address = anyPage() + "/" + anyId();
      if (chance(10)) address = anyPage();
      if (chance(15)) address += "/more";
      if (chance(15)) address = "/" + address;
      if (chance(3)) link.SetDescription(address);
      if (chance(4)) link.SetDescription("See " + anyPage() + "/" + anyId() + " or " + anyPage() + "/" + anyId() + "0");
      link.SetSubAddress(address);
    }
  }

  std::mt19937 random_;
};

/// One Task after the other, each with a walk over all shapes: what renumbering means.
void renumberOneByOne(RandomMap& map) {
  const auto shapes = [&] {
    std::vector<Shape> all;
    for (const Page& page : map.pages) {
      for (const Shape& shape : page.Shapes().all()) all.push_back(shape);
    }
    return all;
  };
  const auto firstTarget = [](const Shape& connector) {
    if (!addin::IsProcessConnector(connector) || !(connector.Hyperlinks().Count() > 0)) return std::string();
    std::string address = targetOf(connector.Hyperlinks().Item(0));
    while (address.starts_with('/')) address.erase(0, 1);
    if (address.find('/') == std::string::npos) return std::string();
    address.erase(0, address.find('/') + 1);
    return address.substr(0, address.find('/'));
  };
  const std::vector<Shape> members =
      map.scope == addin::displayScope::page ? map.target.page.Shapes().all() : map.target.selected;
  bool isAnyNumbered = false;
  for (const Shape& task : members) {
    if (!addin::IsTask(task)) continue;
    isAnyNumbered = true;
    const std::string id = "\"" + map.letters + (map.number < 10 ? "0" : "") + std::to_string(map.number) + "\"";
    ++map.number;
    const std::string old = task.Name().or_({});
    for (const Shape& shape : shapes()) {
      if (firstTarget(shape) == old) addin::changeProcessConnectorText(shape, "RenumberTask", id);
    }
    task.Cells("Prop.Task_ID").SetFormula(id);
  }
  if (!isAnyNumbered) return;
  for (const Shape& shape : shapes()) {
    if (!firstTarget(shape).empty()) addin::changeProcessConnectorText(shape, "CellChange", "");
  }
}

TEST_F(MapTest, RenumberingTogetherIsRenumberingOneByOne) {
  asksForUnknownNames = true;
  session.platform().onForm = [](Form& form) { form.find("BtnOK")->click(); };
  constexpr unsigned maps = QUORVEL_SANITIZED ? 30 : 120;
  for (unsigned seed = 1; seed <= maps && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    const auto make = [&] { return RandomMap(app.Documents().Add(session.templatePath()), stencil, seed); };
    RandomMap together = make(), oneByOne = make();
    ASSERT_EQ(together.contents(), oneByOne.contents());
    for (int round = 0; round < 2; ++round) {
      addin::RenumberZNBShapes(session.addin(), together.target, together.letters, together.number, together.scope);
      renumberOneByOne(oneByOne);
      EXPECT_EQ(firstDifference(oneByOne.contents(), together.contents()), "");
      EXPECT_EQ(together.number, oneByOne.number);
      together.choose();
      oneByOne.choose();
    }
    together.map.Close();
    oneByOne.map.Close();
  }
}

}  // namespace
}  // namespace quorvel
