// Maps as earlier versions of the add-in left them, and the same maps as they are now: a map is drawn with the add-in
// and saved; then what a version lacked is removed or rewritten while the add-in is not connected.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/basic_text.h"
#include "display/task_details.h"
#include "session/session.h"

namespace quorvel {

class OldMaps {
 public:
  /// The versions whose maps differ from each other.
  static constexpr const char* versions[] = {"1.2", "1.5", "1.9", "2.0", "2.02", "2.1"};

  /// What a version's maps lack, by the first version that has it.
  struct Age {
    double version;
    bool lacksRoleLinks() const { return version < 1.3; }     ///< rows that keep the links of roles
    bool lacksMarksOfDrops() const { return version < 1.6; }  ///< of logos; Tasks have a drop action
    bool lacksTimeUnits() const { return version < 2.0; }     ///< of the document, of Tasks and of links
    bool hasOldTasks() const { return version < 2.03; }       ///< without durations, records of links and marks
    bool hasOldLinks() const { return lacksTimeUnits() || version >= 2.03; }  ///< Task Links and Process Connectors
  };

  explicit OldMaps(std::string folder) : folder_(std::move(folder)) { std::filesystem::create_directories(folder_); }

  /// The map as the add-in draws it now, with no more than that version could hold: times in minutes before there were
  /// units, and no links of lines that are not drawn before there were rows for them. Gives the file's name.
  std::string makeCurrent(const std::string& version) const {
    const Age age{val(version)};
    Session session(options(true));
    session.platform().onForm = [](Form& form) {
      if (Control* ok = form.find("BtnOK")) ok->click();
    };
    draw(session, age);
    return save(session, "current " + version + ".vsdx");
  }

  /// The same map as the version left it. `ending`: ".vsdx" or ".vdx".
  std::string make(const std::string& version, const std::string& current, const std::string& ending) const {
    Session session(options(false));
    const Document map = session.app().Documents().Open(current);
    EXPECT_TRUE(map);
    OldMap(session, map, {val(version)}).make(version);
    return save(session, "version " + version + ending);
  }
  std::string make(const std::string& version, const std::string& ending = ".vsdx") const {
    return make(version, makeCurrent(version), ending);
  }

  /// Changes a file while the add-in is not connected.
  void change(const std::string& file, const std::function<void(const Document&)>& act) const {
    Session session(options(false));
    const Document map = session.app().Documents().Open(file);
    act(map);
    EXPECT_TRUE(map.Save());
  }
  static Shape shape(const Document& map, std::string_view name) { return map.Pages().Item(1).Shapes().Item(name); }

 private:
  SessionOptions options(bool connectAddin) const {
    SessionOptions options;
    options.installFolder = QUORVEL_SOURCE_FOLDER "/data";
    options.configurationFolder = folder_ + "configuration";
    options.connectAddin = connectAddin;
    return options;
  }

  std::string save(Session& session, const std::string& name) const {
    const Document map = session.app().Documents().Item(1);
    EXPECT_TRUE(map.SaveAs(folder_ + name))
        << (session.host().refusals().empty() ? "" : session.host().refusals().back().reason);
    return folder_ + name;
  }

  static std::string quoted(std::string_view text) { return quorvel::quoted(text); }

  static void put(const Shape& shape, std::string_view cell, const std::string& formula) {
    EXPECT_TRUE(shape.Cells(cell).FormulaForce(formula)) << cell << " = " << formula;
  }

  static void link(const Shape& shape, const char* description, const char* address, const char* subAddress,
                   const char* record) {
    const Hyperlink made = shape.AddHyperlink();
    EXPECT_TRUE(made.SetDescription(std::string(description)) && made.SetAddress(std::string(address)) &&
                made.SetSubAddress(std::string(subAddress)) && made.SetFrame(std::string(record)));
  }

  static Shape line(const Shape& task, std::string_view row) {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data3() == row) return member;
    }
    ADD_FAILURE() << row;
    return {};
  }

  /// The description of the link that has its duration also in old maps.
  static constexpr const char* keepsDuration = "Two days";

  static void draw(Session& session, const Age& age) {
    const Document map = session.app().Documents().Add(session.templatePath());
    const Page page = map.Pages().Item(1);
    page.SetName(std::string("A Orders <new>"));
    const auto drop = [&](const Page& on, const char* master, double x, double y) {
      const Shape shape = on.Drop(map.Masters().Item(master), x, y);
      EXPECT_TRUE(shape) << master;
      return shape;
    };
    const auto time = [&](const Shape& task, const char* unit, const char* number) {
      put(task, "Prop.Time_Units", quoted(age.lacksTimeUnits() ? "Minutes" : unit));
      put(task, "Prop.Task_Completion_Time", number);
    };

    const Page second = map.Pages().Add();
    second.SetName(std::string("B Packing"));
    drop(second, "Task", 3, 6);
    const Page back = map.Pages().Add();
    back.SetName(std::string("Frame"));
    back.SetBackground(true);
    page.SetBackPage(back);
    back.DrawRectangle(1, 1, 2, 2);

    const Shape task = drop(page, "Task", 2, 7);
    put(task, "Prop.Task_Description", quoted("Take the order"));
    put(task, "Prop.Responsible_Role", quoted("Clerk"));
    put(task, "Prop.SupportingRole_1", quoted("Manager"));
    put(task, "Prop.Guidelines", quoted("Sign;Ask"));
    put(task, "Prop.Resources", quoted("Form"));
    put(task, "Prop.Notes", quoted("Call \"first\""));
    put(task, "Prop.Frequency_Of_Occurrence", quoted("Daily"));
    time(task, "Hours", "15");
    link(task, "Site", "https://example.org/a", "", "WebPage");
    link(line(task, "controls1"), "Rules", "C:\\Docs\\rules.doc#Intro", "", "Document+Abs+C:\\Docs\\+rules.doc");
    link(line(task, "controls1"), "Back", "", "A Orders <new>/A02", "Task+Rel++");
    link(line(task, "Resources1"), "Tool", "C:\\bin\\tool.exe", "", "program+Abs+C:\\bin\\+tool.exe");
    link(line(task, "Responsible_Role"), "Ask", "mailto:a@b.c", "", "Email");
    link(line(task, "SupportingRole_1"), "See", "..\\Other.vsd", "X 1/X05", "Task+Rel+..\\+Other.vsd");
    put(task, "Prop.Linked", quoted("B01"));
    link(task.Shapes().Item(3), "B01", "", "B Packing/B01", "Task+Rel++");

    const Shape hidden = drop(page, "Task", 6, 7);
    put(hidden, "Prop.Guidelines", quoted("Weigh"));
    put(hidden, "Prop.Frequency_Of_Occurrence", quoted("Weekly"));
    time(hidden, "Days", "2.5");
    if (!age.lacksRoleLinks()) {
      link(line(hidden, "controls1"), "Plan", "C:\\Docs\\plan.xls", "", "Document+Abs+C:\\Docs\\+plan.xls");
      link(line(hidden, "controls1"), "Here", "", "B Packing/B01", "Task+Rel++");
      put(hidden, "User.controls", "0");
      addin::redrawAllTaskFields(session.addin(), hidden);
    }
    time(drop(page, "Task", 2, 3), "Seconds", "0.5");
    time(drop(page, "Task", 4, 3), "Weeks", "1");
    put(drop(page, "Task", 6, 3), "Prop.Task_Description", quoted("No time"));

    const Shape way = drop(page, "Task Link", 4, 5), plain = drop(page, "Task Link", 4, 4);
    EXPECT_TRUE(way.Cells("BeginX").GlueTo(task.Cells("Connections.X2")));
    EXPECT_TRUE(way.Cells("EndX").GlueTo(hidden.Cells("Connections.X1")));
    put(way, "Prop.Task_Link", quoted("Don't wait"));
    put(plain, "Prop.Task_Link", quoted("No time"));
    put(way, "Prop.Time_Units", quoted(age.lacksTimeUnits() ? "Minutes" : "Hours"));
    put(way, "Prop.Time_Between_Tasks", "15");

    const Shape kept = drop(page, "Task Link", 4, 2);
    put(kept, "Prop.Task_Link", quoted(keepsDuration));
    put(kept, "Prop.Time_Units", quoted(age.lacksTimeUnits() ? "Minutes" : "Days"));
    put(kept, "Prop.Time_Between_Tasks", "2");

    const Shape near = drop(page, "Process Connector", 8, 7), far = drop(page, "Process Connector", 8, 5);
    link(near, "B01", "", "B Packing/B01", "Task+Rel++");
    link(far, "X05", "Other.vsd", "X 1/X05", "Task+Rel++Other.vsd");
    drop(page, "Process Connector", 8, 3);

    const Shape one = page.DrawRectangle(9, 1, 10, 2), two = page.DrawRectangle(9, 3, 10, 4);
    link(one, "Map", "https://example.org/b", "", "");
    const Window window = session.app().ActiveWindow();
    window.SetPage(page);
    window.DeselectAll();
    window.Select(one, visio::select);
    window.Select(two, visio::select);
    EXPECT_TRUE(window.Selection().Group());
    window.DeselectAll();
  }

  class OldMap {
   public:
    OldMap(Session& session, Document map, Age age) : session_(session), map_(std::move(map)), age_(age) {}

    void make(const std::string& version) {
      makeDocument(version);
      // The times are read while there are units; then the rows of units go from the masters too, because a shape would
      // still have those.
      forEachShape([&](const Shape& shape, const std::string& master) {
        if (master == "Task" && age_.hasOldTasks()) makeTime(shape, "Prop.Task_Completion_Time");
        // There was a time when links had durations and lacked the rest.
        if (master != "Task Link" || !age_.hasOldLinks()) return;
        if (age_.lacksTimeUnits() || shape.Cells("Prop.Task_Link").ResultStr(0) != keepsDuration)
          makeTime(shape, "Prop.Time_Between_Tasks");
      });
      for (const char* name : {"Task", "Task Link"}) makeMaster(name);
      for (const Page& page : map_.Pages().all()) {
        for (const char* row : {"User.PAGE_NAME", "User.Supporting_Role3", "User.Supporting_Role4",
                                "User.TaskLink_txt_Visible", "User.TimegreaterThanzero"}) {
          if (age_.hasOldTasks()) remove(page.PageSheet(), row);
        }
      }
      forEachShape([&](const Shape& shape, const std::string& master) {
        if (age_.lacksMarksOfDrops() && shape.Data1() == "Logo") remove(shape, "User.AlreadyAdded");
        if (master == "Task" && age_.hasOldTasks()) makeTask(shape);
        if (master == "Task Link" && age_.hasOldLinks()) makeLink(shape);
        if (master == "Process Connector" && age_.hasOldLinks()) makeConnector(shape);
      });
    }

   private:
    template <class Visit>
    void forEachShape(Visit visit) {
      for (const Page& page : map_.Pages().all()) {
        for (const Shape& shape : page.Shapes().all()) visit(shape, shape.Master().Name().or_({}));
      }
    }

    static void remove(const Shape& sheet, const std::string& row) {
      if (!(sheet.CellExists(row, 0) == true)) return;
      EXPECT_TRUE(sheet.DeleteRow(row.starts_with("Prop.") ? visio::sectionProp : visio::sectionUser,
                                  sheet.Cells(row).Row().or_(-1)))
          << row;
    }

    void makeDocument(const std::string& version) {
      const Shape sheet = map_.DocumentSheet();
      // Both forms exist.
      const bool isText = version == "1.2" || version == "2.0" || version == "2.1";
      put(sheet, "User.Quorvel_dll_Version", isText ? quoted(version) : version);
      put(sheet, "User.AddinIsFound", "0");
      if (!age_.hasOldTasks()) return;
      remove(sheet, "User.DocumentSaved");
      if (!age_.lacksTimeUnits()) return;
      for (int n = 1; sheet.CellExists("User.visPropRpt" + std::to_string(n), 0) == true; ++n)
        remove(sheet, "User.visPropRpt" + std::to_string(n));
      remove(sheet, "User.Time_Unit");
      remove(sheet, "User.Time_Unit_Disply");
      if (age_.lacksRoleLinks()) remove(sheet, "User.FreqSuggestions");
    }

    void makeMaster(const char* name) {
      const host::Store& store = session_.engine().store();
      const host::MasterId master = store.masterNamed(host::DocumentId{map_.ref().id}, name);
      const host::SheetId shape = store.page(store.master(master)->contents)->shapes.front();
      if (age_.lacksTimeUnits())
        remove(Shape(&session_.host(), ObjectRef{ObjectKind::Shape, shape.value}), "Prop.Time_Units");
    }

    /// Links had no records, blanks and brackets of the names were escaped, and a bookmark was in its own column.
    static void makeHyperlinks(const Shape& shape, bool toPageAlone = false) {
      for (const Hyperlink& link : shape.Hyperlinks().all()) {
        EXPECT_TRUE(link.SetFrame(std::string()));
        std::string address = link.Address().or_({}), target = link.SubAddress().or_({});
        if (toPageAlone) target.resize(target.find('/'));
        for (const auto& [character, escape] : {std::pair{" ", "%20"}, {"<", "%3c"}, {">", "%3e"}}) {
          for (std::size_t at; (at = target.find(character)) != std::string::npos;) target.replace(at, 1, escape);
        }
        if (const std::size_t hash = address.find('#'); hash != std::string::npos) {
          target = address.substr(hash + 1);
          address.resize(hash);
        }
        EXPECT_TRUE(link.SetAddress(address) && link.SetSubAddress(target));
      }
    }

    /// The number that the cell shows, without its duration.
    static void makeTime(const Shape& shape, const char* cell) {
      const std::string shown = shape.Cells(cell).ResultStr(0).or_({});
      put(shape, cell, shown.substr(0, shown.find(' ')));
      put(shape, std::string(cell) + ".Type", "2");
      put(shape, std::string(cell) + ".Format", quoted(""));
      remove(shape, "User.TimeValue");
    }

    void makeTask(const Shape& task) {
      if (age_.lacksTimeUnits()) remove(task, "Prop.Time_Units");
      for (const char* row : {"User.Supporting_Role3", "User.Supporting_Role4", "User.SupportingRole_3_Hyper",
                              "User.SupportingRole_4_Hyper", "User.flag_pic", "User.flag_pic_2"})
        remove(task, row);
      if (age_.lacksRoleLinks()) {
        for (const char* row :
             {"User.SupportingRole_1_Hyper", "User.SupportingRole_2_Hyper", "User.Responsible_Role_Hyper"})
          remove(task, row);
      }
      if (age_.lacksMarksOfDrops()) put(task, "EventDrop", "RUNADDON(\"drop\")");
      for (const char* role : {"Prop.SupportingRole_3", "Prop.SupportingRole_4"}) {
        put(task, std::string(role) + ".Invisible", "1");
        put(task, std::string(role) + ".Type", "0");
        put(task, std::string(role) + ".Format", quoted(""));
      }
      put(task, "Prop.Frequency_Of_Occurrence.Format", quoted(""));
      put(task, "Prop.Frequency_Partial", quoted(""));
      put(task, "Actions.Action[2]", "RUNADDON(\"link\")");
      put(task, "lockCustProp", "0");
      const std::string number = std::to_string(task.ID().or_(0));
      EXPECT_TRUE(task.SetName("Task." + number));
      makeHyperlinks(task);
      makeKeptLinks(task);
      put(task.Shapes().Item(4), "PinY", "Height*0.5");
      makeBox(task.Shapes().Item(3));
      for (const Shape& member : task.Shapes().all()) {
        const std::string mark = member.Data1().or_({});
        if (mark == "Pline") {
          makeHyperlinks(member);
          if (age_.lacksRoleLinks() && member.Hyperlinks().Count() > 0) put(member, "EndArrow", "4");
        } else if (mark == "pic_indicatesNotes" || mark == "pic_indicatorTaskDescription") {
          put(member, "LockDelete", "0");
          EXPECT_TRUE(member.Delete());
        }
      }
    }

    void makeBox(const Shape& box) {
      EXPECT_TRUE(box.SetData1(std::string()));
      for (const char* row : {"User.TxtWidth", "User.StoredTaskID"}) remove(box, row);
      if (age_.lacksTimeUnits()) {
        EXPECT_TRUE(box.DeleteSection(visio::sectionAction));
      } else {
        put(box, "Actions.Action[1]", "RUNADDON(\"link\")");
      }
      makeHyperlinks(box, true);
    }

    /// Each kept link had four parts.
    void makeKeptLinks(const Shape& task) {
      if (age_.lacksRoleLinks() || task.Cells("User.controls").Result(0) != 0) return;
      put(task, "Prop.controls1.Label", quoted(";C:\\Docs\\plan.xls,Plan,,0;,Here,B%20Packing/B01,0"));
    }

    void makeLink(const Shape& link) {
      if (age_.lacksTimeUnits()) remove(link, "Prop.Time_Units");
      for (const char* row : {"User.TaskLink_txt_Visible", "User.TimegreaterThanzero", "User.Single_TaskLink"})
        remove(link, row);
      put(link, "Prop.Task_Link.Label", quoted("Description"));
      put(link, "Fields.Value[1]", "Prop.Time_Str");
      put(link, "Fields.Format[1]", quoted("@"));
      put(link, "lockCustProp", "0");
    }

    void makeConnector(const Shape& connector) {
      remove(connector, "User.StoredTaskID");
      remove(connector, "User.AlreadyAdded");
      put(connector, "Prop.Connecting_TaskID.Prompt", quoted("ID"));
      put(connector, "Char.Size[1]", "9 pt");
      put(connector, "lockCustProp", "0");
      EXPECT_TRUE(connector.DeleteSection(visio::sectionAction));
      EXPECT_TRUE(connector.AddRow(visio::sectionAction, visio::rowLast, 0).has());
      put(connector, "Actions.Action[1]", "RUNADDON(\"link\")");
      EXPECT_TRUE(connector.SetName("Connector." + std::to_string(connector.ID().or_(0))));
      EXPECT_TRUE(connector.SetData1(std::string()));
      const bool isInThisMap = connector.Hyperlinks().Count() > 0 && connector.Hyperlinks().Item(0).Address() == "";
      makeHyperlinks(connector, isInThisMap);
    }

    Session& session_;
    Document map_;
    Age age_;
  };

  std::string folder_;
};

}  // namespace quorvel
