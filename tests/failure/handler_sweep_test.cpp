// Every command of the surface with a listener that interferes at each of the command's events: deletes what the
// command works on, closes documents, undoes, leaves scopes open, edits. The host continues, raises no event about what
// was deleted, and everything that was done can be undone.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "formats/formats.h"
#include "host/automation/in_memory_host.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

using host::DocumentId;

/// Calls `onEvent` at each event, with the object that the event is about.
class EveryEvent : public ApplicationEvents {
 public:
  explicit EveryEvent(Backend& backend) : backend_(backend) { backend_.advise(*this); }
  ~EveryEvent() override { backend_.unadvise(*this); }
  EveryEvent(const EveryEvent&) = delete;
  EveryEvent& operator=(const EveryEvent&) = delete;

  std::function<void(const char* event, const Handle& about, bool exists)> onEvent;

#define QUORVEL_OBJECT_EVENT(event, Kind, read) \
  void event(Kind object) override { report(#event, object, bool(object.read)); }
  QUORVEL_OBJECT_EVENT(DocumentCreated, Document, Name())
  QUORVEL_OBJECT_EVENT(DocumentOpened, Document, Name())
  QUORVEL_OBJECT_EVENT(BeforeDocumentSave, Document, Name())
  QUORVEL_OBJECT_EVENT(BeforeDocumentSaveAs, Document, Name())
  QUORVEL_OBJECT_EVENT(DocumentSaved, Document, Name())
  QUORVEL_OBJECT_EVENT(DocumentSavedAs, Document, Name())
  QUORVEL_OBJECT_EVENT(BeforeDocumentClose, Document, Name())
  QUORVEL_OBJECT_EVENT(PageAdded, Page, Name())
  QUORVEL_OBJECT_EVENT(PageChanged, Page, Name())
  QUORVEL_OBJECT_EVENT(ShapeAdded, Shape, Name())
  QUORVEL_OBJECT_EVENT(BeforeShapeDelete, Shape, Name())
  QUORVEL_OBJECT_EVENT(ShapeParentChanged, Shape, Name())
  QUORVEL_OBJECT_EVENT(BeforeShapeTextEdit, Shape, Name())
  QUORVEL_OBJECT_EVENT(ShapeExitedTextEdit, Shape, Name())
  QUORVEL_OBJECT_EVENT(TextChanged, Shape, Name())
  QUORVEL_OBJECT_EVENT(CellChanged, Cell, Name())
  QUORVEL_OBJECT_EVENT(FormulaChanged, Cell, Name())
  QUORVEL_OBJECT_EVENT(SelectionChanged, Window, Caption())
  QUORVEL_OBJECT_EVENT(WindowActivated, Window, Caption())
  QUORVEL_OBJECT_EVENT(AppActivated, Application, Version())
  QUORVEL_OBJECT_EVENT(BeforeModal, Application, Version())
  QUORVEL_OBJECT_EVENT(AfterModal, Application, Version())
  QUORVEL_OBJECT_EVENT(Click, CommandBarButton, Id())
#undef QUORVEL_OBJECT_EVENT
  void EnterScope(int, std::string_view) override { report("EnterScope", {}, true); }
  void ExitScope(int, std::string_view) override { report("ExitScope", {}, true); }
  void MarkerEvent(int, std::string_view) override { report("MarkerEvent", {}, true); }
  void MouseDown(int, int, double, double) override { report("MouseDown", {}, true); }
  void MouseMove(int, int, double, double) override { report("MouseMove", {}, true); }

 private:
  void report(const char* event, const Handle& about, bool exists) {
    if (onEvent) onEvent(event, about, exists);
  }
  Backend& backend_;
};

std::string fileName(const char* name) {
  // The tests may run at the same time.
  return testing::TempDir() + "quorvel-sweep-" + std::to_string(getpid()) + name;
}

/// A drawing with one of everything that commands work on, and a second drawing.
struct Stage {
  Stage() {
    running.engine().setReportsDialog(&reports);
    const host::Store& store = running.engine().store();
    Document stencil = app.Documents().Add("");
    makeMaster(stencil, "Box", [](const Page& page) { page.DrawRectangle(1, 1, 2, 2); });
    makeMaster(stencil, "Line", [](const Page& page) { page.DrawLine(0, 0, 2, 2); });
    document = app.Documents().Add("");
    page = document.Pages().Item(1);
    second = document.Pages().Add();
    app.ActiveWindow().SetPage(page);
    box = page.Drop(master("Box"), 2, 2);
    target = page.Drop(master("Box"), 6, 6);
    plain = page.DrawRectangle(4, 1, 5, 2);
    line = page.DrawLine(2, 2, 6, 6);
    line.Cells("BeginX").GlueTo(box.Cells("PinX"));
    line.Cells("EndX").GlueTo(target.Cells("PinX"));
    select({page.DrawRectangle(1, 7, 2, 8), page.DrawRectangle(3, 7, 4, 8)});
    group = app.ActiveWindow().Selection().Group();
    for (const Shape& shape : {box, plain}) {
      shape.AddNamedRow(visio::sectionUser, "x", 0);
      shape.Cells("User.x").SetFormula("Width*2");
      shape.AddNamedRow(visio::sectionUser, "follows", 0);
      shape.Cells("User.follows").SetFormula(box.NameID().or_("") + "!User.x+1");
    }
    plain.SetText("text");
    plain.AddHyperlink().SetAddress("there");
    page.Layers().Add("Layer").Add(plain, 1);
    bar = app.CommandBars().Add("Tools", 1, false, true);
    button = bar.Controls().Add(1);
    other = app.Documents().Add("");
    other.Pages().Item(1).DrawRectangle(0, 0, 1, 1);
    select({box, plain});
    app.ActiveWindow().Selection().Copy();
    // Marked as saved, because writing a file waits for the disk.
    host::placeDocument(running.engine().edit().documentFields(DocumentId{document.ref().id}), fileName(".vsdx"));
    page.DrawRectangle(7, 7, 8, 8).Delete();
    app.Undo();
    for (const DocumentId each : store.documents()) running.engine().undo().discard(each);
    // A step for the acts that undo.
    plain.Cells("User.x").SetFormula("5");
    plain.Cells("User.x").SetFormula("6");
    app.Undo();
  }
  void makeMaster(const Document& stencil, const char* name, const std::function<void(const Page&)>& draw) {
    host::Store& store = running.engine().edit().making();
    const host::MasterId made = store.addMaster(DocumentId{stencil.ref().id}, name);
    const host::PageId contents = store.master(made)->contents;
    draw(Page(&running, {ObjectKind::Page, contents.value, 0}));
    masters[name] = Master(&running, {ObjectKind::Master, made.value, 0});
  }
  Master master(const char* name) { return masters.at(name); }
  /// In the window of the drawing, which is activated.
  void select(const std::vector<Shape>& shapes) {
    for (const host::WindowState& window : running.engine().windows()) {
      if (window.document.value != document.ref().id) continue;
      const Window found(&running, {ObjectKind::Window, window.id.value, 0});
      found.Activate();
      found.DeselectAll();
      for (const Shape& shape : shapes) found.Select(shape, visio::select);
      return;
    }
  }

  static host::EngineOptions withFiles() {
    host::EngineOptions options;
    options.formats = formats::allFormats();
    return options;
  }

  /// Reads what a report is made of.
  struct Reports : host::ReportsDialog {
    explicit Reports(host::InMemoryHost& host) : host_(host) {}
    void showReports(host::DocumentId of) override { EXPECT_NE(host_.engine().store().document(of), nullptr); }
    host::InMemoryHost& host_;
  };

  host::InMemoryHost running{withFiles()};
  Reports reports{running};
  Application app = running.app();
  Document document, other;
  Page page, second;
  std::map<std::string, Master> masters;
  Shape box, target, plain, line, group;
  CommandBar bar;
  CommandBarControl button;
};

struct Command {
  const char* name;
  std::function<void(Stage&)> run;
};

const std::vector<Command>& commands() {
  static const std::string picture = QUORVEL_SOURCE_FOLDER "/data/Images/Quorvel Logo.jpg";
  static const std::vector<Command> all{
      {"Drop", [](Stage& s) { s.page.Drop(s.master("Box"), 3, 3); }},
      {"Drop elsewhere", [](Stage& s) { s.second.Drop(s.master("Box"), 3, 3); }},
      {"Drop connected", [](Stage& s) { s.page.DropConnected(s.master("Box"), s.box, 4, s.master("Line")); }},
      {"Drop connected by a line", [](Stage& s) { s.page.DropConnected(s.master("Box"), s.box, 2, {}); }},
      {"Draw", [](Stage& s) { s.page.DrawRectangle(0, 0, 1, 1), s.page.DrawLine(0, 0, 1, 1); }},
      {"Draw in a group", [](Stage& s) { s.group.DrawRectangle(0, 0, 1, 1); }},
      {"Draw in a shape", [](Stage& s) { s.plain.DrawLine(0, 0, 1, 1); }},
      {"Import", [](Stage& s) { s.page.Import(picture), s.group.Import(picture); }},
      {"Duplicate", [](Stage& s) { s.box.Duplicate(); }},
      {"Paste", [](Stage& s) { s.page.Paste(); }},
      {"Paste elsewhere", [](Stage& s) { s.second.Paste(); }},
      {"Copy", [](Stage& s) { s.app.ActiveWindow().Selection().Copy(); }},
      {"Delete", [](Stage& s) { s.box.Delete(); }},
      {"Delete a group", [](Stage& s) { s.group.Delete(); }},
      {"Delete the selection", [](Stage& s) { s.app.ActiveWindow().Selection().Delete(); }},
      {"Group", [](Stage& s) { s.app.ActiveWindow().Selection().Group(); }},
      {"Group connected ones",
       [](Stage& s) {
         s.select({s.box, s.target, s.line});
         s.app.ActiveWindow().Selection().Group();
       }},
      {"Ungroup", [](Stage& s) { s.group.Ungroup(); }},
      {"Ungroup the selection",
       [](Stage& s) {
         s.select({s.group});
         s.app.ActiveWindow().Selection().Ungroup();
       }},
      {"Convert to group", [](Stage& s) { s.plain.Group(); }},
      {"Select",
       [](Stage& s) {
         s.app.ActiveWindow().Select(s.line, visio::select);
         s.app.ActiveWindow().DeselectAll();
       }},
      {"Show a page", [](Stage& s) { s.app.ActiveWindow().SetPage(s.second); }},
      {"Add a page", [](Stage& s) { s.document.Pages().Add(); }},
      {"Delete the page", [](Stage& s) { s.page.Delete(); }},
      {"Rename the page", [](Stage& s) { s.page.SetName("Other"); }},
      {"Page kind",
       [](Stage& s) {
         s.second.SetBackground(true);
         s.page.SetBackPage(s.second);
       }},
      {"Rename", [](Stage& s) { s.box.SetName("New"), s.box.SetData1("data"), s.box.SetStyle("No Style"); }},
      {"Glue", [](Stage& s) { s.line.Cells("BeginX").GlueTo(s.plain.Cells("PinX")); }},
      {"Glue to a point",
       [](Stage& s) {
         s.plain.AddRow(7, visio::rowLast, 0);
         s.line.Cells("EndX").GlueTo(s.plain.Cells("Connections.X1"));
       }},
      {"Move what is glued to", [](Stage& s) { s.box.Cells("PinX").SetResultIU(3); }},
      {"Write", [](Stage& s) { s.box.Cells("User.x").SetFormula("7"); }},
      {"Write a number", [](Stage& s) { s.box.Cells("Width").SetResult(visio::unitsInches, 3); }},
      {"Add a named row", [](Stage& s) { s.box.AddNamedRow(visio::sectionUser, "y", 0); }},
      {"Add rows",
       [](Stage& s) {
         s.box.AddRow(visio::sectionAction, visio::rowLast, 0);
         s.box.AddSection(11);
         s.box.AddRow(11, visio::rowLast, 138);
       }},
      {"Delete a row", [](Stage& s) { s.box.DeleteRow(visio::sectionUser, 0); }},
      {"Delete a section", [](Stage& s) { s.box.DeleteSection(visio::sectionUser); }},
      {"Rename a row", [](Stage& s) { s.box.Section(visio::sectionUser).Row(0).SetName("renamed"); }},
      {"Row type", [](Stage& s) { s.plain.SetRowType(10, 1, 139); }},
      {"Layers",
       [](Stage& s) {
         s.page.Layers().Add("Second").Add(s.box, 1);
         s.page.Layers().Item("Layer").Remove(s.plain, 1);
         s.page.Layers().Item("Layer").CellsC(visio::columnLayerVisible).ResultForce(visio::unitsNone, 0);
       }},
      {"Hyperlinks",
       [](Stage& s) {
         s.box.AddHyperlink().SetDescription("here");
         s.plain.Hyperlinks().Item(0).SetSubAddress("page");
         s.plain.Hyperlinks().Item(0).Delete();
       }},
      {"Follow a hyperlink",
       [](Stage& s) {
         const std::string shape = s.box.Name().or_("");
         s.document.FollowHyperlink("", s.page.Name().or_("") + "/" + shape, "zoom=150", {}, true);
         s.document.FollowHyperlink("", s.second.Name().or_(""));
         s.other.FollowHyperlink(fileName(".vsdx"), "");
         s.app.ActiveWindow().Close();
       }},
      {"Text", [](Stage& s) { s.plain.SetText("new"); }},
      {"Text field", [](Stage& s) { s.plain.Characters().AddCustomField("User.x", 0); }},
      {"First field", [](Stage& s) { s.box.Cells("Fields.Value[1]").FormulaForce("User.x"); }},
      {"Shape data",
       [](Stage& s) {
         s.running.editShapeData(s.plain, {{"User.x", "9"}, {"User.follows", "\"typed\""}});
       }},
      {"Find and Replace",
       [](Stage& s) {
         s.group.Shapes().Item(1).SetText("a text");
         s.running.replaceText("text", "word");
       }},
      {"Text edit", [](Stage& s) { s.plain.BeginTextEdit(), s.plain.EndTextEdit("typed"); }},
      {"Order", [](Stage& s) { s.box.BringForward(), s.box.BringToFront(); }},
      {"Flip", [](Stage& s) { s.box.FlipHorizontal(), s.line.ReverseEnds(), s.group.UpdateAlignmentBox(); }},
      {"New drawing", [](Stage& s) { s.app.Documents().Add(""); }},
      {"Open", [](Stage& s) { s.app.Documents().OpenEx(fileName(".vsdx"), 1); }},
      {"Save", [](Stage& s) { s.document.Save(); }},
      {"Save as", [](Stage& s) { s.document.SaveAs(fileName("-as.vsdx")); }},
      {"Close", [](Stage& s) { s.document.Close(); }},
      {"Close the other one", [](Stage& s) { s.other.Close(); }},
      {"Undo", [](Stage& s) { s.app.Undo(); }},
      {"Undo what is selected",
       [](Stage& s) {
         s.page.Drop(s.master("Box"), 3, 3);
         s.app.Undo();
         s.app.Redo();
       }},
      {"Redo", [](Stage& s) { s.app.Redo(); }},
      {"Scope kept",
       [](Stage& s) {
         const Maybe<int> scope = s.app.BeginUndoScope("scope");
         s.page.Drop(s.master("Box"), 3, 3);
         s.app.EndUndoScope(scope.or_(0), true);
       }},
      {"Scope rolled back",
       [](Stage& s) {
         const Maybe<int> scope = s.app.BeginUndoScope("scope");
         s.page.Drop(s.master("Box"), 3, 3);
         s.app.EndUndoScope(scope.or_(0), false);
       }},
      {"Window",
       [](Stage& s) {
         for (const host::WindowState& window : std::vector(s.running.engine().windows()))
           Window(&s.running, {ObjectKind::Window, window.id.value, 0}).Activate();
       }},
      {"Commands of the program", [](Stage& s) { s.app.DoCmd(1312), s.app.QueueMarkerEvent("marker"); }},
      {"Button", [](Stage& s) { s.button.Execute(); }},
      {"Reports", [](Stage& s) { s.app.CommandBars().FindControl(50244).Controls().Item(1).Execute(); }},
      {"The user",
       [](Stage& s) {
         s.running.activateApplication();
         s.running.mouseDown(1, 0, 1, 1);
         s.running.mouseMove(0, 0, 1, 1);
         s.running.beginModal();
         s.running.endModal();
       }},
  };
  return all;
}

struct Act {
  const char* name;
  std::function<void(Stage&, const Handle& about)> run;
};

const std::vector<Act>& acts() {
  static const std::vector<Act> all{
      {"deletes the event's shape",
       [](Stage& s, const Handle& about) {
         const ObjectRef& object = about.ref();
         if (object.kind == ObjectKind::Shape || object.kind == ObjectKind::Cell)
           Shape(&s.running, {ObjectKind::Shape, object.id, 0}).Delete();
       }},
      {"deletes all shapes",
       [](Stage& s, const Handle&) {
         for (const Shape& shape : s.page.Shapes().all()) shape.Delete();
         for (const Shape& shape : s.second.Shapes().all()) shape.Delete();
       }},
      {"deletes the page", [](Stage& s, const Handle&) { s.page.Delete(); }},
      {"deletes other pages",
       [](Stage& s, const Handle&) {
         for (const Page& page : s.document.Pages().all()) {
           if (!(page == s.page)) page.Delete();
         }
       }},
      {"closes the drawing", [](Stage& s, const Handle&) { s.document.Close(); }},
      {"closes all drawings",
       [](Stage& s, const Handle&) {
         while (s.app.Documents().Count().or_(0) > 0 && s.app.Documents().Item(1).Close()) continue;
       }},
      {"undoes", [](Stage& s, const Handle&) { s.app.Undo(); }},
      {"redoes", [](Stage& s, const Handle&) { s.app.Redo(); }},
      {"leaves a scope open",
       [](Stage& s, const Handle&) {
         s.app.BeginUndoScope("left open");
         s.plain.SetName("scoped");
       }},
      {"ends all scopes",
       [](Stage& s, const Handle&) {
         const int last = s.app.BeginUndoScope("last").or_(0);
         for (int scope = last; scope > last - 4; --scope) s.app.EndUndoScope(scope, scope % 2 == 0);
         s.document.Close();
       }},
      {"rolls back a scope of its own",
       [](Stage& s, const Handle&) {
         const Maybe<int> scope = s.app.BeginUndoScope("mine");
         s.page.Delete();
         s.box.Delete();
         s.app.EndUndoScope(scope.or_(0), false);
       }},
      {"edits",
       [](Stage& s, const Handle& about) {
         const Shape shape(&s.running, {ObjectKind::Shape, about.ref().id, 0});
         for (const Shape& each : {shape, s.box, s.plain}) {
           each.SetName("edited");
           each.Cells("PinX").SetFormula("2.5 in");
           each.AddNamedRow(visio::sectionUser, "made", 0);
           each.SetText("edited");
           each.Cells("LockDelete").SetFormula("1");
         }
         s.page.SetName("edited");
       }},
      {"renames and deletes rows",
       [](Stage& s, const Handle&) {
         s.plain.Section(visio::sectionUser).Row(0).SetName("other");
         s.box.DeleteSection(visio::sectionUser);
         s.line.DeleteSection(10);
         s.plain.DeleteSection(visio::sectionHyperlink);
       }},
      {"copies something else",
       [](Stage& s, const Handle&) {
         s.select({s.line});
         s.app.ActiveWindow().Selection().Copy();
       }},
      {"makes things",
       [](Stage& s, const Handle&) {
         s.page.Drop(s.master("Line"), 1, 1);
         s.box.Duplicate();
         s.document.Pages().Add();
         s.app.Documents().Add("");
       }},
      {"groups and ungroups",
       [](Stage& s, const Handle&) {
         s.group.Ungroup();
         s.select({s.box, s.plain});
         s.app.ActiveWindow().Selection().Group();
       }},
      {"deletes all masters' users and undoes all",
       [](Stage& s, const Handle&) {
         s.box.Delete();
         s.target.Delete();
         while (s.app.Undo()) continue;
       }},
      {"takes the button away", [](Stage& s, const Handle&) { s.bar.Delete(); }},
  };
  return all;
}

class HandlerSweep : public testing::Test {
 protected:
  ~HandlerSweep() override {
    std::error_code ignored;
    for (const char* name : {".vsdx", "-as.vsdx"}) std::filesystem::remove(fileName(name), ignored);
  }

  /// Counts the events of the command, by running it with a listener that does nothing.
  static std::vector<std::string> eventsOf(const Command& command) {
    Stage stage;
    std::vector<std::string> events;
    EveryEvent listener(stage.running);
    listener.onEvent = [&](const char* event, const Handle&, bool) { events.emplace_back(event); };
    command.run(stage);
    return events;
  }

  /// Undoes everything, in all drawings.
  static void undoAll(host::Engine& engine) {
    for (const DocumentId document : std::vector(engine.store().documents())) {
      while (engine.undo().undo(document)) continue;
    }
    engine.leaveOutDeleted();
  }
  static void redoAll(host::Engine& engine) {
    for (const DocumentId document : std::vector(engine.store().documents())) {
      while (engine.undo().redo(document)) continue;
    }
    engine.leaveOutDeleted();
  }

  /// `forGood`: no undo log holds what the act does, so that deleted objects are freed at once.
  static void run(const Command& command, std::size_t at, const Act& act, bool forGood) {
    Stage stage;
    host::Engine& engine = stage.running.engine();
    const DocumentId document{stage.document.ref().id};
    std::string before;
    {
      // The state after everything is undone.
      undoAll(engine);
      before = StoreDump::of(engine.store(), document);
      stage.app.Redo();
    }
    {
      std::size_t count = 0;
      EveryEvent hostile(stage.running), next(stage.running);
      hostile.onEvent = [&](const char*, const Handle& about, bool) {
        if (++count != at) return;
        std::optional<host::UndoLog::Attribution> unknown;
        if (forGood) unknown.emplace(engine.undo(), true);
        act.run(stage, about);
      };
      next.onEvent = [&](const char* event, const Handle&, bool exists) {
        EXPECT_TRUE(exists) << event << " about what was deleted";
      };
      command.run(stage);
    }
    // A listener's scope outside of commands stays open until a script ends it.
    for (int scope = stage.app.BeginUndoScope("last").or_(0); engine.undo().isOpen() && scope > 0xFFFF; --scope)
      stage.app.EndUndoScope(scope, true);
    ASSERT_FALSE(engine.undo().isOpen());
    for (const host::WindowState& window : engine.windows()) {
      EXPECT_TRUE(!window.page || engine.exists(window.page));
      for (const host::SheetId shape : window.selection()) EXPECT_TRUE(engine.exists(shape));
    }
    const bool isOpen = engine.exists(document);
    const std::string after = isOpen ? StoreDump::of(engine.store(), document) : std::string();
    const bool hasRedo = isOpen && engine.undo().redoCount(document) > 0;
    undoAll(engine);
    const bool comesBack = isOpen && !forGood;
    if (comesBack) {
      EXPECT_EQ(firstDifference(before, StoreDump::of(engine.store(), document)), "");
    }
    redoAll(engine);
    if (comesBack && !hasRedo) {
      EXPECT_EQ(firstDifference(after, StoreDump::of(engine.store(), document)), "");
    }
  }
};

TEST_F(HandlerSweep, EachActAtEachEventOfEachCommand) {
  ASSERT_TRUE(Stage().document.SaveAs(fileName(".vsdx")));
  for (const Command& command : commands()) {
    const std::vector<std::string> events = eventsOf(command);
    std::map<std::string, int> seen;
    for (std::size_t at = 1; at <= events.size(); ++at) {
      // The first of a kind and some more: a routed line changes dozens of cells.
      constexpr int mostOfAKind = QUORVEL_SANITIZED ? 2 : 4;
      if (++seen[events[at - 1]] > mostOfAKind) continue;
      for (const Act& act : acts()) {
        for (const bool forGood : {false, true}) {
          SCOPED_TRACE(std::string(command.name) + ", at event " + std::to_string(at) + ", " + events[at - 1] +
                       ", a listener " + act.name + (forGood ? " for good" : ""));
          run(command, at, act, forGood);
          if (HasFatalFailure()) return;
        }
      }
    }
  }
}

}  // namespace
}  // namespace quorvel
