// The organisation's roles: renamed, deleted and imported, with the changes in all Tasks.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "commands/customize_role_names.h"
#include "display/task_details.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

constexpr const char* defaultRoles =
    ";Account Executive;Administrator;Chief Executive Officer;Chief Financial Officer;Chief Information Officer;Chief "
    "Operating Officer;Clerk;Director;General Manager;Manager;Managing Director;President;Sales Representative;Vice "
    "President";

class Roles : public MapTest {
 protected:
  Page page, later, background;
  Shape first, second, third, behind;
  std::vector<std::string> messages;
  std::vector<MessageAnswer> answers;  ///< to the messages in turn; Ok when they run out
  std::function<void(Form&)> inRoles, inName;

  void SetUp() override {
    MapTest::SetUp();
    page = newMap("AB Order entry");
    first = dropTask(page);
    second = dropTask(page, 6);
    later = map.Pages().Add();
    third = dropTask(later);
    background = map.Pages().Add();
    ASSERT_TRUE(background.SetBackground(true));
    behind = dropTask(background);
    app.ActiveWindow().SetPage(page);
    messages.clear();
    session.platform().onForm = [this](Form& form) {
      const auto& act = form.name() == "frmNewRoleName" ? inName : inRoles;
      if (act) act(form);
    };
    session.platform().onMessage = [this](const MessageBox& box) {
      EXPECT_EQ(box.title, "Quorvel");
      messages.push_back(box.text);
      const std::size_t asked = messages.size();
      return asked <= answers.size() ? answers[asked - 1] : MessageAnswer::Ok;
    };
  }

  void customize(std::function<void(Form&)> act) {
    messages.clear();
    inRoles = std::move(act);
    addin::cbrBtnCustomizeRoleName_Click(session.addin());
  }
  /// What is typed into the small dialog, and whether OK then closed it.
  void enterName(const std::string& name, bool* accepted = nullptr) {
    inName = [=](Form& form) {
      form.find("txtNewRoleName")->type(name);
      form.find("btnOK")->click();
      if (accepted) *accepted = !form.isOpen();
    };
  }
  static Control& list(Form& form) { return *form.find("lstRoleNames"); }
  static std::size_t placeOf(Form& form, const std::string& role) {
    const auto& rows = list(form).rows();
    return static_cast<std::size_t>(
        std::find_if(rows.begin(), rows.end(), [&](const ListRow& row) { return row.text() == role; }) - rows.begin());
  }
  static void select(Form& form, const std::string& role) { list(form).selectRow(placeOf(form, role)); }
  static void use(const Shape& task, const char* row, const std::string& role) {
    ASSERT_TRUE(task.Cells("Prop." + std::string(row)).FormulaForce("\"" + role + "\""));
  }
  static std::string roleOf(const Shape& task, const char* row) { return text(task, "Prop." + std::string(row)); }
  std::string documentRoles() { return text(map.DocumentSheet(), "User.RoleNames"); }
};

TEST_F(Roles, ARenamedRoleIsRenamedInEveryTaskThatUsesIt) {
  use(first, "Responsible_Role", "Clerk");
  use(first, "SupportingRole_2", "Clerk");
  use(second, "Responsible_Role", "clerk");
  use(third, "SupportingRole_4", "Clerk");
  use(behind, "Responsible_Role", "Clerk");
  enterName(" Bookkeeper ");
  customize([&](Form& form) {
    EXPECT_EQ(form.caption(), "Customize Role Names");
    EXPECT_FALSE(form.find("btnEdit")->enabled());
    EXPECT_FALSE(form.find("btnDelete")->enabled());
    select(form, "Clerk");
    ASSERT_TRUE(form.find("btnEdit")->click());
    EXPECT_EQ(placeOf(form, "Clerk"), list(form).rows().size()) << "the old name is deleted";
    EXPECT_EQ(placeOf(form, "Bookkeeper"), 2u) << "and the new one is at its sorted place";
    EXPECT_FALSE(form.find("btnEdit")->enabled()) << "nothing is selected any more";
    EXPECT_EQ(roleOf(first, "Responsible_Role"), "Bookkeeper") << "Tasks follow at once";
    EXPECT_EQ(documentRoles(), defaultRoles) << "the list does when the dialog closes";
  });
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(roleOf(first, "SupportingRole_2"), "Bookkeeper");
  EXPECT_EQ(roleOf(third, "SupportingRole_4"), "Bookkeeper");
  EXPECT_EQ(roleOf(second, "Responsible_Role"), "clerk") << "letter case counts";
  EXPECT_EQ(roleOf(behind, "Responsible_Role"), "Clerk") << "background pages are not changed";
  const std::string roles = documentRoles();
  EXPECT_EQ(roles.find("Clerk"), std::string::npos);
  EXPECT_NE(roles.find(";Administrator;Bookkeeper;Chief Executive Officer;"), std::string::npos) << roles;
  for (const Shape& task : {first, second, third}) EXPECT_EQ(roleOf(task, "SupportingRole_3.Format"), roles);

  // The whole dialog is one step.
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(documentRoles(), defaultRoles);
  EXPECT_EQ(roleOf(first, "Responsible_Role"), "Clerk");
  EXPECT_EQ(roleOf(third, "SupportingRole_4"), "Clerk");
  EXPECT_EQ(roleOf(third, "SupportingRole_3.Format"), defaultRoles);
}

TEST_F(Roles, ARenamedRoleKeepsItsHyperlinks) {
  const auto line = [](const Shape& task, const std::string& row) {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data3() == row) return member;
    }
    return Shape();
  };
  const auto addLink = [&](const Shape& task, const char* row) {
    EXPECT_TRUE(line(task, row).AddHyperlink().SetAddress(std::string(row) + ".doc"));
  };
  const auto address = [&](const Shape& task, const char* row) {
    const Hyperlink link = line(task, row).Hyperlinks().Item(0);
    return link.Address().or_("(none)");
  };
  for (const char* row : {"Responsible_Role", "SupportingRole_1", "SupportingRole_3"}) {
    use(first, row, "Clerk");
    addLink(first, row);
  }
  use(first, "SupportingRole_2", "Manager");
  addLink(first, "SupportingRole_2");
  // The lines of the second Task are not drawn while the role is renamed.
  use(second, "SupportingRole_4", "Clerk");
  addLink(second, "SupportingRole_4");
  ASSERT_TRUE(second.Cells("User.Supporting_Role4").FormulaForce("0"));
  addin::redrawAllTaskFields(session.addin(), second);
  ASSERT_FALSE(line(second, "SupportingRole_4"));

  enterName("Bookkeeper");
  customize([&](Form& form) {
    select(form, "Clerk");
    form.find("btnEdit")->click();
  });
  for (const char* row : {"Responsible_Role", "SupportingRole_1", "SupportingRole_3"}) {
    EXPECT_EQ(roleOf(first, row), "Bookkeeper") << row;
    EXPECT_EQ(address(first, row), std::string(row) + ".doc");
  }
  EXPECT_TRUE(line(first, "PicLinkedSupportingRole_1"));
  EXPECT_EQ(address(first, "SupportingRole_2"), "SupportingRole_2.doc");
  ASSERT_TRUE(second.Cells("User.Supporting_Role4").FormulaForce("1"));
  addin::redrawAllTaskFields(session.addin(), second);
  EXPECT_EQ(address(second, "SupportingRole_4"), "SupportingRole_4.doc");

  // Another role is a change, and a deleted one is none.
  use(first, "SupportingRole_1", "Director");
  EXPECT_EQ(address(first, "SupportingRole_1"), "(none)");
  answers = {MessageAnswer::Yes, MessageAnswer::Yes};
  customize([&](Form& form) {
    select(form, "Bookkeeper");
    form.find("btnDelete")->click();
  });
  EXPECT_EQ(text(second, "User.SupportingRole_4_Hyper"), "");
}

TEST_F(Roles, ANameThatTheListCannotHoldIsRefused) {
  const struct {
    const char* edited;  ///< null for a new role
    const char *typed, *message;
    bool closes;
  } cases[] = {
      {nullptr, "Clerk;Cook", "Please enter a valid role name. ';' is not allowed ", false},
      {nullptr, "   ", "Please enter a valid role name", false},
      {nullptr, " cLERK ", "The role name you have entered already exists", false},
      {"Manager", "President", "The role name you have entered already exists", false},
      {"Manager", "manager", nullptr, true},
      {"Manager", "Manager", nullptr, true},
  };
  use(first, "Responsible_Role", "Manager");
  for (const auto& c : cases) {
    bool accepted = false;
    enterName(c.typed, &accepted);
    customize([&](Form& form) {
      if (c.edited) select(form, c.edited);
      EXPECT_TRUE(form.find(c.edited ? "btnEdit" : "btnNew")->click());
    });
    EXPECT_EQ(messages, c.message ? std::vector<std::string>{c.message} : std::vector<std::string>()) << c.typed;
    EXPECT_EQ(accepted, c.closes) << c.typed;
    EXPECT_EQ(documentRoles(), defaultRoles) << c.typed;
    EXPECT_EQ(roleOf(first, "Responsible_Role"), "Manager") << c.typed;
  }
}

TEST_F(Roles, AQuotationMarkIsStoredInTheDocumentButNotInTheListsOfTheTasks) {
  enterName("the \"boss\"");
  customize([](Form& form) { form.find("btnNew")->click(); });
  EXPECT_NE(documentRoles().find(";the \"boss\";"), std::string::npos) << documentRoles();
  EXPECT_EQ(roleOf(first, "Responsible_Role.Format"), defaultRoles) << "the host refuses the formula";
  customize([](Form& form) { EXPECT_EQ(placeOf(form, "the \"boss\""), 13u); });
}

TEST_F(Roles, DeletingAsksOnceForEachRoleInUse) {
  use(first, "Responsible_Role", "Clerk");
  use(second, "SupportingRole_1", "Clerk");
  use(second, "SupportingRole_3", "Director");
  use(third, "SupportingRole_3", "Director");
  use(behind, "SupportingRole_3", "President");
  const auto selectFour = [](Form& form) {
    for (const char* role : {"Clerk", "Director", "Manager", "President"}) select(form, role);
    EXPECT_FALSE(form.find("btnEdit")->enabled());
  };
  const std::string sure = "Are you sure you want to delete the selected role(s) ?";
  answers = {MessageAnswer::Cancel};
  customize([&](Form& form) {
    selectFour(form);
    list(form).keyDown(keys::deleteKey);
  });
  EXPECT_EQ(messages, std::vector<std::string>{sure});
  EXPECT_EQ(documentRoles(), defaultRoles);

  answers = {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Yes};
  customize([&](Form& form) {
    selectFour(form);
    EXPECT_TRUE(form.find("btnDelete")->click());
    EXPECT_TRUE(form.find("btnEdit")->enabled()) << "only the declined one is left, still selected";
  });
  const auto inUse = [](const std::string& role) {
    return "Role \"" + role + "\" is in use. Are you sure you want to continue deletion?";
  };
  EXPECT_EQ(messages, (std::vector<std::string>{sure, inUse("Clerk"), inUse("Director")}));
  EXPECT_EQ(roleOf(first, "Responsible_Role"), "Clerk");
  EXPECT_EQ(roleOf(second, "SupportingRole_1"), "Clerk");
  EXPECT_EQ(roleOf(second, "SupportingRole_3"), "");
  EXPECT_EQ(roleOf(third, "SupportingRole_3"), "");
  EXPECT_EQ(roleOf(behind, "SupportingRole_3"), "President");
  EXPECT_EQ(documentRoles(),
            ";Account Executive;Administrator;Chief Executive Officer;Chief Financial Officer;Chief Information "
            "Officer;Chief Operating Officer;Clerk;General Manager;Managing Director;Sales Representative;Vice "
            "President");

  // The list may become empty, in the document and in all Tasks.
  answers.assign(3, MessageAnswer::Yes);
  customize([&](Form& form) {
    for (std::size_t i = 0; i < list(form).rows().size(); ++i) list(form).selectRow(i);
    list(form).keyDown(keys::keypadDelete);
  });
  EXPECT_EQ(map.DocumentSheet().Cells("User.RoleNames").Formula(), "\"\"");
  EXPECT_EQ(roleOf(third, "Responsible_Role.Format"), "");
  EXPECT_EQ(roleOf(first, "Responsible_Role"), "");
  customize([](Form& form) { EXPECT_TRUE(list(form).rows().empty()); });
}

class RoleImport : public Roles {
 protected:
  std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) / ("quorvel-roles-" + std::to_string(getpid()));
  Maybe<std::string> chosen;
  std::string filter;

  void SetUp() override {
    Roles::SetUp();
    std::filesystem::create_directories(folder);
    session.platform().onFileDialog = [this](const FileDialog& dialog) {
      filter = dialog.filter;
      return chosen;
    };
  }
  void TearDown() override { std::filesystem::remove_all(folder); }

  std::string fileWithRoles(const char* name, const std::string& roles) {
    const Document document = app.Documents().Add("");
    const Shape sheet = document.DocumentSheet();
    sheet.AddNamedRow(visio::sectionUser, "RoleNames", 0);
    sheet.Cells("User.RoleNames").FormulaForce("\"" + roles + "\"");
    EXPECT_TRUE(document.SaveAs((folder / name).string())) << lastRefusal();
    document.Close();
    return (folder / name).string();
  }
  /// Runs the import and gives the roles that the list then has beyond those of the document.
  std::vector<std::string> import(const Maybe<std::string>& file) {
    chosen = file;
    std::vector<std::string> added;
    customize([&](Form& form) {
      form.find("btnImport")->click();
      for (const ListRow& row : list(form).rows()) {
        if (!containsWord(defaultRoles, row.text())) added.push_back(row.text());
      }
      // Leave the document as it was.
      for (const std::string& role : added) list(form).removeRow(placeOf(form, role));
    });
    return added;
  }
  static bool containsWord(const std::string& roles, const std::string& role) {
    return (roles + ";").find(";" + role + ";") != std::string::npos;
  }
};

TEST_F(RoleImport, TakesTheMissingRolesOfAnotherDrawing) {
  const std::vector<std::string> added{"clerk", "Zookeeper"};
  const int open = *app.Documents().Count();
  for (const char* name : {"other.vsdx", "other.vdx", "other.vstx"}) {
    const std::string file = fileWithRoles(name, ";Zookeeper;clerk;Clerk;President");
    EXPECT_EQ(import(file), added) << name;
    EXPECT_EQ(app.Documents().Count(), open) << name;
  }
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(
      filter,
      "drawing file (*.vsd;*.vsdx;*.vsdm;*.vdx)|*.vsd;*.vsdx;*.vsdm;*.vdx|template file (*.vst;*.vstx;*.vstm;*.vtx)|"
      "*.vst;*.vstx;*.vstm;*.vtx");

  // A drawing that is open is read from memory, with unsaved changes, and stays open.
  const Window ours = app.ActiveWindow();
  const std::string file = fileWithRoles("open.vsdx", ";Zookeeper");
  const Document other = app.Documents().Open(file);
  other.DocumentSheet().Cells("User.RoleNames").FormulaForce("\";Gardener\"");
  ASSERT_TRUE(ours.Activate());
  EXPECT_EQ(import(file), std::vector<std::string>{"Gardener"});
  EXPECT_TRUE(other.Name());
  EXPECT_EQ(documentRoles(), defaultRoles);
  EXPECT_EQ(text(other.DocumentSheet(), "User.RoleNames"), ";Gardener");
}

TEST_F(RoleImport, ClosesItsFileAndIsOneStepWithTheRestOfTheDialog) {
  use(first, "Responsible_Role", "Clerk");
  const std::string file = fileWithRoles("other.vsdx", ";Zookeeper");
  const auto steps = [&] { return session.engine().undo().undoCount(host::DocumentId{map.ref().id}); };
  const std::size_t before = steps();
  const int open = *app.Documents().Count();
  chosen = file;
  enterName("Bookkeeper");
  customize([&](Form& form) {
    select(form, "Clerk");
    form.find("btnEdit")->click();
    form.find("btnImport")->click();
  });
  EXPECT_EQ(app.Documents().Count(), open);
  EXPECT_TRUE(containsWord(documentRoles(), "Zookeeper"));
  EXPECT_EQ(roleOf(first, "Responsible_Role"), "Bookkeeper");
  EXPECT_EQ(steps(), before + 1);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(documentRoles(), defaultRoles);
  EXPECT_EQ(roleOf(first, "Responsible_Role"), "Clerk");
}

TEST_F(RoleImport, EndsWithoutChangesWhereThereIsNothingToRead) {
  const int open = *app.Documents().Count();
  const std::vector<std::string> nothing, invalid{"Invalid Path"};
  EXPECT_EQ(import({}), nothing);
  EXPECT_EQ(messages, invalid);
  EXPECT_EQ(import((folder / "missing.vsdx").string()), nothing);
  EXPECT_EQ(messages, invalid);

  for (const char* name : {"old.vsd", "broken.vsdx"}) {
    std::ofstream(folder / name) << "no drawing";
    const std::size_t refusals = session.host().refusalCount();
    EXPECT_EQ(import((folder / name).string()), nothing) << name;
    EXPECT_TRUE(messages.empty()) << name;
    EXPECT_GT(session.host().refusalCount(), refusals) << "the reason is in the host's log: " << name;
  }
  EXPECT_EQ(import(fileWithRoles("empty.vsdx", "")), nothing);
  const Document plain = app.Documents().Add("");
  ASSERT_TRUE(plain.SaveAs((folder / "plain.vsdx").string()));
  plain.Close();
  EXPECT_EQ(import((folder / "plain.vsdx").string()), nothing) << "a drawing without roles";
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(app.Documents().Count(), open);
  EXPECT_EQ(documentRoles(), defaultRoles);
}

}  // namespace
}  // namespace quorvel
