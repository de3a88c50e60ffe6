// Every published member on null handles, on handles to deleted objects, and with arguments that make no sense:
// refused, never a crash, and nothing changed.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

#include "failure/handle_calls.h"
#include "host/host_fixture.h"
#include "host/store_dump.h"

namespace quorvel {
namespace {

TEST(HandleSweep, CallsEveryMember) {
  std::map<Member, std::string> called;
  for (const HandleCall& call : handleCalls()) called[call.member] += call.isPut ? 'P' : 'R';
  for (const MemberInfo& info : allMembers()) {
    const int access = static_cast<int>(info.access);
    std::string wanted = info.access == MemberAccess::C || (access & static_cast<int>(MemberAccess::G)) ? "R" : "";
    if (info.access != MemberAccess::C && (access & static_cast<int>(MemberAccess::P))) wanted += 'P';
    EXPECT_EQ(called[info.member], wanted) << info.objectName << "." << info.memberName;
  }
}

/// A small drawing with one object of each kind.
class Sweep : public HostTest {
 protected:
  Master box = Master(&running, {ObjectKind::Master,
                                 addMaster("Box",
                                           [this](host::Sheet& group, host::Sheet& member) {
                                             set(group, "User.a", "1");
                                             set(member, "User.b", "Width*2", 4);
                                           })
                                     .value,
                                 0});

  Subjects makeSubjects() {
    Subjects s;
    s.application = app;
    s.documents = app.Documents();
    s.document = app.Documents().Add("");
    s.pages = s.document.Pages();
    s.page = s.pages.Add();
    s.masters = s.document.Masters();
    s.shape = s.page.Drop(box, 2, 2);
    s.master = s.masters.Item("Box");
    s.shapes = s.shape.Shapes();
    s.shape.AddNamedRow(visio::sectionUser, "own", 0);
    s.shape.AddRow(visio::sectionAction, visio::rowLast, 0);
    s.section = s.shape.Section(visio::sectionUser);
    s.row = s.section.Row(1);
    s.cell = s.shape.Cells("User.own");
    s.characters = s.shape.Characters();
    s.layers = s.page.Layers();
    s.layer = s.layers.Add("Visible");
    s.layer.Add(s.shape, 1);
    s.windows = app.Windows();
    s.window = app.ActiveWindow();
    s.window.Select(s.shape, visio::select);
    s.selection = s.window.Selection();
    s.hyperlinks = s.shape.Hyperlinks();
    s.hyperlink = s.shape.AddHyperlink();
    const Shape line = s.page.DrawLine(4, 4, 6, 6);
    line.Cells("BeginX").GlueTo(s.shape.Cells("PinX"));
    s.connects = s.shape.FromConnects();
    s.connect = s.connects.Item(1);
    s.commandBars = app.CommandBars();
    s.commandBar = s.commandBars.Add("Tools", 1, false, true);
    s.controls = s.commandBar.Controls();
    s.control = s.controls.Add(1);
    return s;
  }

  /// Objects for arguments, which are not deleted.
  void giveArguments(Subjects& s) {
    s.otherPage = document.Pages().Item(1);
    s.otherShape = s.otherPage.DrawRectangle(0, 0, 1, 1);
    s.otherMaster = box;
    s.otherCell = s.otherShape.Cells("PinX");
  }

  void expectAllRefused(const Subjects& s, const char* removal) {
    const std::string before = StoreDump::of(running);
    for (const HandleCall& call : handleCalls()) {
      const MemberInfo& info = infoOf(call.member);
      const bool isNull = !subjectOf(s, info.object);
      const std::size_t refusals = running.refusalCount();
      const std::string name =
          std::string(removal) + ": " + std::string(info.objectName) + "." + std::string(info.memberName);
      EXPECT_FALSE(call.succeeds(s)) << name;
      EXPECT_EQ(running.refusalCount(), refusals + (isNull ? 0 : 1)) << name << " is recorded once";
      if (!isNull) {
        EXPECT_EQ(running.refusals().back().member, call.member) << name;
      }
    }
    EXPECT_EQ(firstDifference(before, StoreDump::of(running)), "") << removal;
  }
};

TEST_F(Sweep, NullHandles) {
  Subjects s;
  giveArguments(s);
  expectAllRefused(s, "null");
}

TEST_F(Sweep, HandlesToDeletedObjects) {
  const struct {
    const char* name;
    std::function<void(Subjects& all, Subjects& deleted)> remove;
  } removals[] = {
      {"deleted shape",
       [](Subjects& all, Subjects& deleted) {
         deleted.shape = all.shape;
         deleted.shapes = all.shapes;
         deleted.section = all.section;
         deleted.row = all.row;
         deleted.cell = all.cell;
         deleted.characters = all.characters;
         deleted.hyperlinks = all.hyperlinks;
         deleted.hyperlink = all.hyperlink;
         deleted.connects = all.connects;
         deleted.connect = all.connect;
         ASSERT_TRUE(all.shape.Delete());
       }},
      {"member of a deleted group",
       [](Subjects& all, Subjects& deleted) {
         deleted.shape = all.shape.Shapes().Item(1);
         deleted.section = deleted.shape.Section(visio::sectionUser);
         deleted.row = deleted.section.Row(0);
         deleted.cell = deleted.shape.Cells("User.b");
         deleted.characters = deleted.shape.Characters();
         deleted.hyperlinks = deleted.shape.Hyperlinks();
         ASSERT_TRUE(all.shape.Delete());
       }},
      {"deleted rows",
       [](Subjects& all, Subjects& deleted) {
         deleted.row = all.row;
         deleted.cell = all.cell;
         deleted.layer = all.layer;
         deleted.hyperlink = all.hyperlink;
         ASSERT_TRUE(all.shape.DeleteRow(visio::sectionUser, *all.cell.Row()));
         ASSERT_TRUE(all.hyperlink.Delete());
         ASSERT_TRUE(all.page.PageSheet().DeleteRow(241, 0));
       }},
      {"deleted page",
       [](Subjects& all, Subjects& deleted) {
         deleted.page = all.page;
         deleted.shapes = all.page.Shapes();
         deleted.shape = all.page.PageSheet();
         deleted.cell = deleted.shape.Cells("PageWidth");
         deleted.section = deleted.shape.Section(visio::sectionUser);
         deleted.layers = all.layers;
         deleted.layer = all.layer;
         deleted.hyperlinks = deleted.shape.Hyperlinks();
         deleted.connects = all.page.Connects();
         deleted.connect = all.connect;
         ASSERT_TRUE(all.page.Delete());
       }},
      {"closed document",
       [](Subjects& all, Subjects& deleted) {
         deleted.document = all.document;
         deleted.pages = all.pages;
         deleted.page = all.page;
         deleted.masters = all.masters;
         deleted.master = all.master;
         deleted.window = all.window;
         deleted.shape = all.document.DocumentSheet();
         deleted.cell = all.cell;
         deleted.layers = all.layers;
         ASSERT_TRUE(all.document.Close());
       }},
      {"undone drop",
       [](Subjects& all, Subjects& deleted) {
         deleted.shape = all.page.DrawRectangle(0, 0, 1, 1);
         deleted.cell = deleted.shape.Cells("PinX");
         deleted.characters = deleted.shape.Characters();
         ASSERT_TRUE(all.application.Undo());
       }},
      {"deleted toolbar",
       [](Subjects& all, Subjects& deleted) {
         deleted.commandBar = all.commandBar;
         deleted.controls = all.controls;
         deleted.control = all.control;
         ASSERT_TRUE(all.commandBar.Delete());
       }},
  };
  for (const auto& removal : removals) {
    Subjects all = makeSubjects(), deleted;
    giveArguments(deleted);
    removal.remove(all, deleted);
    expectAllRefused(deleted, removal.name);
  }
}

/// A drawing of its own for each member, so that one call does not change the drawing of the next.
class World : public Sweep {
 public:
  World() {
    subjects = makeSubjects();
    giveArguments(subjects);
  }
  void TestBody() override {}
  std::string dump() { return StoreDump::of(running); }
  host::InMemoryHost& host() { return running; }
  Subjects subjects;
};

/// Arguments that make no sense, alone and after valid ones.
std::vector<std::vector<Argument>> absurdArguments(const ObjectRef& self) {
  static const std::string longText(20'000, '('), deepFormula = std::string(20'000, '-') + "1";
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<Argument> values{std::monostate(),
                                     nan,
                                     HUGE_VAL,
                                     -1e300,
                                     std::int64_t{-1},
                                     std::numeric_limits<std::int64_t>::max(),
                                     std::int64_t{std::numeric_limits<int>::min()},
                                     std::string_view(),
                                     std::string_view("\xff\xfe\x00!", 4),
                                     std::string_view(longText),
                                     std::string_view(deepFormula),
                                     ObjectRef{},
                                     self,
                                     ObjectRef{ObjectKind::Cell, 0xFFFFFFFFu, ~std::uint64_t{0}},
                                     ObjectRef{ObjectKind::Shape, 0xFFFFFFFFu, 0},
                                     ObjectRef{static_cast<ObjectKind>(200), 1, 1}};
  std::vector<std::vector<Argument>> lists{{}};
  for (const Argument& value : values) {
    lists.push_back({value});
    lists.push_back({value, value, value, value});
    lists.push_back({std::int64_t{visio::sectionUser}, value, value});
    lists.push_back({std::int64_t{visio::sectionFirstComponent}, value, std::int64_t{138}});
  }
  return lists;
}

TEST(AbsurdArguments, AreTakenOrRefusedAndARefusalChangesNothing) {
  for (const MemberInfo& info : allMembers()) {
    World world;
    host::InMemoryHost& running = world.host();
    const ObjectRef object = subjectOf(world.subjects, info.object).ref();
    const std::string name = std::string(info.objectName) + "." + std::string(info.memberName);
    const auto lists = absurdArguments(object);
    const bool isCall = info.access == MemberAccess::C;
    const std::string start = world.dump();
    for (const auto& list : lists) {
      if (!isCall) running.get(object, info.member, list);
    }
    ASSERT_EQ(firstDifference(start, world.dump()), "") << "reading " << name;
    std::string before = start;
    for (const auto& list : lists) {
      if (list.empty() && !isCall) continue;
      const bool done = isCall ? running.call(object, info.member, list).has()
                               : running.put(object, info.member, Arguments(list).first(list.size() - 1), list.back());
      std::string after = world.dump();
      ASSERT_EQ(done ? "" : firstDifference(before, after), "") << name;
      before = std::move(after);
    }
  }
}

TEST_F(Sweep, AMemberOfAnotherKindOfObjectIsRefused) {
  const Subjects s = makeSubjects();
  const std::string before = StoreDump::of(running);
  for (const MemberInfo& info : allMembers()) {
    for (const MemberInfo& other : allMembers()) {
      if (other.object == info.object) continue;
      const ObjectRef object = subjectOf(s, other.object).ref();
      EXPECT_FALSE(running.get(object, info.member, {}));
      EXPECT_FALSE(running.put(object, info.member, {}, std::int64_t{1}));
      EXPECT_FALSE(running.call(object, info.member, {}));
    }
  }
  EXPECT_EQ(firstDifference(before, StoreDump::of(running)), "");
}

}  // namespace
}  // namespace quorvel
