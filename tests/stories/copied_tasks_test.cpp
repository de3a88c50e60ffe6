// Tasks and Task Links are pasted from another map or from the same one: their IDs, and what is merged into the lists
// of the map.
#include <gtest/gtest.h>

#include <map>

#include "host/store_dump.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class CopiedTasks : public MapTest {
 protected:
  Document source;
  Page from, to;

  // What the user answers to the dialog of copied Tasks, and to each question by a part of its text.
  bool acceptsCopies = true;
  bool keepsNumbers = false;
  std::string copiedLetters, copiedNumber;
  std::map<std::string, MessageAnswer> answers;
  std::vector<std::string> asked;
  int copyDialogs = 0;

  void SetUp() override {
    MapTest::SetUp();
    const auto first = session.platform().onForm;
    session.platform().onForm = [this, first](Form& form) {
      first(form);
      if (form.name() != "frmCopiedTaskIdSuggestion") return;
      ++copyDialogs;
      if (!copiedLetters.empty()) form.find("txtTaskIdLetter")->type(copiedLetters);
      if (!copiedNumber.empty()) form.find("txtNextTaskNumber")->type(copiedNumber);
      if (keepsNumbers) form.find("OptionKeep")->click();
      if (acceptsCopies) form.find("BtnOK")->click();
    };
    session.platform().onMessage = [this](const MessageBox& box) {
      asked.push_back(box.text);
      for (const auto& [part, answer] : answers) {
        if (box.text.find(part) != std::string::npos) return answer;
      }
      return box.buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Yes;
    };
    from = newMap("B Source");
    source = map;
    to = newTarget();
  }
  /// The text of the abbreviations as the first paste leaves it.
  Page newTarget() {
    const Page page = newMap("A Target");
    put(map.DocumentSheet(), "User.Time_Unit_Disply", "s;m;h;d;w;");
    return page;
  }

  static void put(const Shape& shape, const std::string& cell, const std::string& value) {
    EXPECT_TRUE(shape.Cells(cell).FormulaForce("\"" + value + "\"")) << cell;
  }
  std::string listOf(const Document& document, const std::string& cell) { return text(document.DocumentSheet(), cell); }

  /// Selects the shapes in this order, copies them and pastes them.
  void copy(const std::vector<Shape>& shapes, const Page& onto) {
    const Page home = shapes.front().ContainingPage();
    for (const Window& window : app.Windows().all()) {
      if (!(window.Document() == home.Document())) continue;
      if (!(window.Page() == home)) window.SetPage(home);
      window.DeselectAll();
      for (const Shape& shape : shapes) window.Select(shape, visio::select);
      EXPECT_TRUE(window.Selection().Copy()) << lastRefusal();
    }
    asked.clear();
    EXPECT_TRUE(onto.Paste()) << lastRefusal();
  }

  std::vector<Shape> tasks(const Page& page) {
    std::vector<Shape> found;
    for (const Shape& shape : page.Shapes().all()) {
      if (shape.CellExists("Prop.Task_ID", 0) == true) found.push_back(shape);
    }
    return found;
  }
  /// The IDs in the order of the page. Each Task is named by its own.
  std::string ids(const Page& page) {
    std::string all;
    for (const Shape& task : tasks(page)) {
      all += (all.empty() ? "" : " ") + text(task, "Prop.Task_ID");
      EXPECT_EQ(task.Name().or_({}), text(task, "Prop.Task_ID"));
    }
    return all;
  }
  int nextNumber(const Page& page) { return static_cast<int>(number(page.PageSheet(), "User.Next_Task_Id")); }
  std::string dump(const Document& document) {
    for (const Window& window : app.Windows().all()) window.DeselectAll();
    return StoreDump::of(session.engine().store(), host::DocumentId{document.ref().id});
  }
};

TEST_F(CopiedTasks, GetNewOrKeptNumbersOnAnEmptyAndOnAFilledPage) {
  answer.letters = "B";
  answer.number = "11";
  std::vector<Shape> originals;
  for (int i = 0; i < 3; ++i) originals.push_back(dropTask(from, 2 + i, 5));
  ASSERT_EQ(ids(from), "B11 B12 B13");

  struct Case {
    const char* name;
    bool filled, keeps;
    const char* letters;
    const char* number;
    const char* ids;
    const char* pageLetters;
    int next;
  };
  const Case cases[] = {
      {"empty, new", false, false, "", "5", "A05 A06 A07", "A", 8},
      {"empty, kept", false, true, "Q", "", "Q11 Q12 Q13", "Q", 1},
      {"filled, new", true, false, "", "", "A01 A02 A03 A04", "A", 5},
      {"filled, other letters", true, false, "X", "40", "A01 X40 X41 X42", "A", 5},
      {"filled, kept", true, true, "", "", "A01 A11 A12 A13", "A", 2},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const Page page = map.Pages().Add();
    ASSERT_TRUE(page.SetName(std::string("A ") + each.name));
    keepsNumbers = false;
    answer.letters = answer.number = "";
    if (each.filled) dropTask(page);
    keepsNumbers = each.keeps;
    copiedLetters = each.letters;
    copiedNumber = each.number;
    copyDialogs = 0;
    const std::string before = dump(map);
    // Numbers follow the order on the page, whatever the order of selecting.
    copy({originals[2], originals[0], originals[1]}, page);
    EXPECT_EQ(copyDialogs, 1);
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(ids(page), each.ids);
    EXPECT_EQ(text(page.PageSheet(), "User.Task_Id_Letters"), each.pageLetters);
    EXPECT_EQ(nextNumber(page), each.next);
    EXPECT_EQ(ids(from), "B11 B12 B13");
    const std::string after = dump(map);
    ASSERT_TRUE(app.Undo());
    EXPECT_EQ(firstDifference(before, dump(map)), "");
    ASSERT_TRUE(app.Redo());
    EXPECT_EQ(firstDifference(after, dump(map)), "");
  }
}

TEST_F(CopiedTasks, AreDeletedTogetherWhenTheirDialogIsClosed) {
  answer.letters = "A";
  const Shape first = dropTask(from), second = dropTask(from, 5, 5), alone = dropTask(to);
  acceptsCopies = false;
  const std::string before = dump(map);
  copy({first, second}, to);
  EXPECT_EQ(ids(to), "A01");
  EXPECT_EQ(nextNumber(to), 2);
  EXPECT_EQ(firstDifference(before, dump(map)), "");
  // One Task on a page of others asks nothing, not even within one map.
  copy({first}, to);
  ASSERT_TRUE(alone.Duplicate());
  EXPECT_EQ(ids(to), "A01 A02 A03");
  EXPECT_EQ(copyDialogs, 1);
  EXPECT_TRUE(asked.empty());
  // The only Task of a page asks for the letters, and goes when the user refuses.
  const Page empty = map.Pages().Add();
  answer.accept = false;
  copy({first}, empty);
  EXPECT_EQ(ids(empty), "");
  answer.accept = true;
  answer.letters = "E";
  answer.number = "7";
  copy({first}, empty);
  EXPECT_EQ(ids(empty), "E07");
}

TEST_F(CopiedTasks, MergeTheirFrequencyByOneQuestionForAllOfAPaste) {
  asksForUnknownNames = true;  // a refused copy is deleted while its cells are still asked for
  struct Case {
    const char* name;
    const char* sourceList;  ///< description and abbreviation that the source has in place of Weekly
    const char* sourceAbbreviation;
    const char* question;
    MessageAnswer answer;
    const char* description;  ///< of both copies; empty where they are refused
    const char* partial;
    const char* last;  ///< the last description of the target's list and its abbreviation
    const char* lastAbbreviation;
  };
  const Case cases[] = {
      {"known", "Weekly", "WK", "", MessageAnswer::Yes, "Weekly", "WK", "Biennial (every two years)", "BI"},
      {"other description, yes", "Each week", "wk", "different description", MessageAnswer::Yes, "Weekly", "WK",
       "Biennial (every two years)", "BI"},
      {"other description, no", "Each week", "WK", "different description", MessageAnswer::No, nullptr, "",
       "Biennial (every two years)", "BI"},
      {"other abbreviation, yes", "Weekly", "W", "different abbreviation", MessageAnswer::Yes, "Weekly", "WK",
       "Biennial (every two years)", "BI"},
      {"other abbreviation, cancel", "Weekly", "W", "different abbreviation", MessageAnswer::Cancel, nullptr, "",
       "Biennial (every two years)", "BI"},
      {"new, yes", "At night", "N", "new frequency", MessageAnswer::Yes, "At night", "N", "At night", "N"},
      {"new, no", "At night", "N", "new frequency", MessageAnswer::No, "", "", "Biennial (every two years)", "BI"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    from = newMap("B Source");
    Shape lists = map.DocumentSheet();
    put(lists, "User.FreqSuggestions", std::string(";Daily;") + each.sourceList);
    put(lists, "User.FreqSuggestions.Prompt", std::string(";DY;") + each.sourceAbbreviation);
    answer.letters = "B";
    std::vector<Shape> originals{dropTask(from), dropTask(from, 5, 5)};
    for (const Shape& task : originals) put(task, "Prop.Frequency_Of_Occurrence", each.sourceList);
    to = newTarget();
    const Shape resident = dropTask(to);
    answers = {{"frequency", each.answer}, {"Frequency", each.answer}};
    const std::string before = dump(map);
    copy(originals, to);
    EXPECT_EQ(asked.size(), *each.question ? 1u : 0u);
    if (!asked.empty()) {
      EXPECT_NE(asked[0].find(each.question), std::string::npos) << asked[0];
    }
    std::string last = listOf(map, "User.FreqSuggestions");
    EXPECT_EQ(last.substr(last.rfind(';') + 1), each.last);
    last = listOf(map, "User.FreqSuggestions.Prompt");
    EXPECT_EQ(last.substr(last.rfind(';') + 1), each.lastAbbreviation);
    EXPECT_EQ(text(resident, "Prop.Frequency_Of_Occurrence.Format"), listOf(map, "User.FreqSuggestions"));
    if (!each.description) {
      EXPECT_EQ(firstDifference(before, dump(map)), "");
      continue;
    }
    ASSERT_EQ(tasks(to).size(), 3u);
    for (std::size_t i = 1; i < 3; ++i) {
      const Shape copied = tasks(to)[i];
      EXPECT_EQ(text(copied, "Prop.Frequency_Of_Occurrence"), each.description);
      EXPECT_EQ(text(copied, "Prop.Frequency_Partial"), each.partial);
      EXPECT_EQ(text(copied, "Prop.Frequency_Of_Occurrence.Format"), listOf(map, "User.FreqSuggestions"));
    }
    while (app.Undo()) {
    }
    EXPECT_EQ(tasks(to).size(), 0u);
  }
}

TEST_F(CopiedTasks, FindNoPlaceForATwentySeventhFrequency) {
  std::string descriptions, abbreviations;
  for (int i = 0; i < 26; ++i) {
    descriptions += ";often " + std::to_string(i);
    abbreviations += std::string(";") + static_cast<char>('A' + i);
  }
  put(map.DocumentSheet(), "User.FreqSuggestions", descriptions);
  put(map.DocumentSheet(), "User.FreqSuggestions.Prompt", abbreviations);
  put(source.DocumentSheet(), "User.FreqSuggestions", ";At noon");
  put(source.DocumentSheet(), "User.FreqSuggestions.Prompt", ";11");
  answer.letters = "B";
  std::vector<Shape> originals{dropTask(from), dropTask(from, 5, 5)};
  for (const Shape& task : originals) put(task, "Prop.Frequency_Of_Occurrence", "At noon");
  dropTask(to);
  copy(originals, to);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[1], "The frequency will be deleted from the task because no more new frequencies could be defined.");
  EXPECT_EQ(listOf(map, "User.FreqSuggestions"), descriptions);
  ASSERT_EQ(tasks(to).size(), 3u);
  EXPECT_EQ(text(tasks(to)[1], "Prop.Frequency_Partial"), " ");
  EXPECT_EQ(text(tasks(to)[2], "Prop.Frequency_Partial"), "");
}

TEST_F(CopiedTasks, BringTheirRoles) {
  put(source.DocumentSheet(), "User.RoleNames", ";Baker;miller;Vice President;Astronaut \"\"A\"\"");
  answer.letters = "B";
  const Shape original = dropTask(from);
  const std::pair<const char*, const char*> roles[] = {{"Prop.Responsible_Role", "Astronaut \"\"A\"\""},
                                                       {"Prop.SupportingRole_1", "CLERK"},
                                                       {"Prop.SupportingRole_2", "miller"},
                                                       {"Prop.SupportingRole_3", "Vice President"},
                                                       {"Prop.SupportingRole_4", "Baker"}};
  for (const auto& [cell, role] : roles) put(original, cell, role);
  answer.letters = "A";
  const Shape resident = dropTask(to);
  answers = {{"this role \"miller\"", MessageAnswer::No}};
  copy({original}, to);
  EXPECT_EQ(asked, (std::vector<std::string>{"Would you like to add role \"Astronaut \"A\"\" to the roles list? ",
                                             "Would you like to add this role \"miller\" to the roles list?",
                                             "Would you like to add this role \"Baker\" to the roles list?"}));
  const Shape copied = tasks(to)[1];
  EXPECT_EQ(text(copied, "Prop.Responsible_Role"), "Astronaut \"A\"");
  EXPECT_EQ(text(copied, "Prop.SupportingRole_2"), "");
  EXPECT_EQ(text(copied, "Prop.SupportingRole_4"), "Baker");
  const std::string list = listOf(map, "User.RoleNames");
  EXPECT_EQ(list.find(";Account Executive;Administrator;Astronaut \"A\";Baker;Chief"), 0u) << list;
  EXPECT_EQ(text(copied, "Prop.SupportingRole_3.Format"), list);
  EXPECT_EQ(text(resident, "Prop.Responsible_Role.Format").find("Baker"), std::string::npos)
      << "a list with a quotation mark is refused by the other Tasks, which keep theirs";
  // Within one map nothing is asked, not even for the last role of the list.
  put(copied, "Prop.SupportingRole_2", "Vice President");
  copy({copied}, to);
  EXPECT_TRUE(asked.empty()) << asked[0];
}

TEST_F(CopiedTasks, BringTheirTimeUnitsByOneQuestionForAll) {
  put(source.DocumentSheet(), "User.Time_Unit_Disply", "s;min;h;d;w");
  answer.letters = "B";
  std::vector<Shape> originals{dropTask(from), dropTask(from, 5, 5), drop(from, "Task Link", 4, 2),
                               drop(from, "Process Connector", 4, 3)};
  for (const Shape& task : {originals[0], originals[1]})
    ASSERT_TRUE(task.Cells("Prop.Task_Completion_Time").SetFormula("5"));
  const auto shown = [&](const Shape& task) {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data2() == "Task_Completion_Time") return member.Text().or_("(none)");
    }
    return std::string("(no label)");
  };
  ASSERT_EQ(shown(originals[0]), "5min");
  answer.letters = "A";
  const Shape resident = dropTask(to);
  ASSERT_TRUE(resident.Cells("Prop.Task_Completion_Time").SetFormula("3"));
  for (const bool takesOver : {false, true}) {
    answers = {{"time unit abbreviation", takesOver ? MessageAnswer::Yes : MessageAnswer::No}};
    copy(originals, to);
    EXPECT_EQ(asked.size(), 1u);
    EXPECT_EQ(shown(resident), takesOver ? "3min" : "3m");
    EXPECT_EQ(shown(tasks(to)[1]), takesOver ? "5min" : "5m");
    ASSERT_TRUE(app.Undo());
  }
  EXPECT_EQ(listOf(map, "User.Time_Unit_Disply"), "s;m;h;d;w;");
}

TEST_F(CopiedTasks, OfAHandlerThatPastesDuringAQuestionAreABatchOfTheirOwn) {
  answer.letters = "B";
  std::vector<Shape> originals{dropTask(from), dropTask(from, 5, 5)};
  answer.letters = "A";
  dropTask(to);
  const Page aside = map.Pages().Add();
  dropTask(aside);
  bool pasted = false;
  const auto usual = session.platform().onForm;
  session.platform().onForm = [&](Form& form) {
    if (form.name() == "frmCopiedTaskIdSuggestion" && !std::exchange(pasted, true)) {
      copiedLetters = "N";
      copiedNumber = "70";
      EXPECT_TRUE(aside.Paste());
      copiedLetters = copiedNumber = "";
    }
    usual(form);
  };
  copy(originals, to);
  EXPECT_EQ(ids(to), "A01 A02 A03");
  EXPECT_EQ(ids(aside), "A01 N70 N71");
}

TEST_F(CopiedTasks, OfAHandlerThatPastesDuringTheQuestionAboutTimeUnits) {
  put(source.DocumentSheet(), "User.Time_Unit_Disply", "s;min;h;d;w");
  answer.letters = "B";
  const std::vector<Shape> originals{dropTask(from), dropTask(from, 5, 5), dropTask(from, 7, 5)};
  for (const Shape& task : originals) ASSERT_TRUE(task.Cells("Prop.Task_Completion_Time").SetFormula("5"));
  answer.letters = "A";
  dropTask(to);
  const Page aside = map.Pages().Add();
  bool pasted = false;
  session.platform().onMessage = [&](const MessageBox&) {
    if (!std::exchange(pasted, true)) {
      EXPECT_TRUE(aside.Paste());
    }
    return MessageAnswer::No;
  };
  copy(originals, to);
  EXPECT_TRUE(pasted);
  EXPECT_EQ(ids(to), "A01 A02 A03 A04");
  EXPECT_EQ(tasks(aside).size(), 3u);
}

TEST_F(CopiedTasks, OfAnotherEditionOfTheStencilShareOneMaster) {
  answer.letters = "B";
  const std::vector<Shape> originals{dropTask(from), dropTask(from, 5, 5)};
  for (const Master& master : source.Masters().all()) {
    host::Master& edition = *session.engine().edit().making().master(host::MasterId{master.ref().id});
    edition.uniqueId = edition.baseId =
        "{11111111-2222-3333-4444-" + std::to_string(100'000'000'000 + edition.id.value) + "}";
  }
  answer.letters = "A";
  dropTask(to);
  for (int times = 0; times < 2; ++times) copy(originals, to);
  std::string names;
  for (const Master& master : map.Masters().all()) names += master.Name().or_("?") + " ";
  EXPECT_EQ(names, "Task Task Link Process Connector Task.2 ");
}

}  // namespace
}  // namespace quorvel
