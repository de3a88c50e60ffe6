// Hyperlinks made, read back, edited and deleted in their dialog.
#include <gtest/gtest.h>

#include "stories/hyperlinks_fixture.h"

namespace quorvel {
namespace {

class Hyperlinks : public HyperlinkTest {
 protected:
  void SetUp() override {
    HyperlinkTest::SetUp();
    save();
    std::ofstream(folder + "sub/plan.doc") << "text";
    std::ofstream(folder + "sub/run.exe") << "text";
  }
  std::string plan() const { return folder + "sub/plan.doc"; }
  std::string program() const { return folder + "sub/run.exe"; }

  // Each fills a page.
  void fillTask(Form& form, bool absolute = false) {
    click(form, "Option_Task");
    if (absolute) click(form, "OptAbsolute_Task");
    type(form, "Comb_Page", "B Packing");
    type(form, "Comb_Task", "B01");
    type(form, "Comb_Zoom", "75%");
    type(form, "txtDescription_Task", "to packing");
  }
  void fillDocument(Form& form, bool absolute = false) {
    click(form, "Option_Document");
    chosenFile = plan();
    click(form, "Comdbrowes_Document");
    if (absolute) click(form, "OptAbsolute_Document");
    type(form, "txtInternalLoc", "Intro");
    click(form, "chkNewWindow_Document");
  }
  void fillProgram(Form& form, bool absolute = false) {
    click(form, "Option_Program");
    chosenFile = program();
    click(form, "cmdBrowes_Program");
    if (absolute) click(form, "OptAbsolute_Program");
  }
  void fillWebPage(Form& form) {
    click(form, "Option_Web_page");
    type(form, "txtAddressWebPage", "https://example.org/a b?c=%20#d");
    type(form, "txtbookMark_Email", "top");
    type(form, "txtDescription_WebPage", "Web");
  }
  void fillEmail(Form& form) {
    click(form, "OptEmail");
    type(form, "txtAddress_email", "orders@example.org");
  }
};

/// What the columns of a row hold, for each kind of link.
TEST_F(Hyperlinks, WhatIsWrittenForEachKind) {
  struct Case {
    std::string name;
    std::function<void(Form&)> fill;
    std::string link;
  };
  const std::vector<Case> cases{
      {"Task", [&](Form& form) { fillTask(form); }, " | B Packing/B01 | zoom=75 | Task+Rel+" + file + "+ | same"},
      {"Task, absolute", [&](Form& form) { fillTask(form, true); },
       " | B Packing/B01 | zoom=75 | Task+Abs+" + file + "+ | same"},
      {"document", [&](Form& form) { fillDocument(form); },
       "sub/plan.doc#Intro |  |  | Document+Rel+" + plan() + "+ | new"},
      {"document, absolute", [&](Form& form) { fillDocument(form, true); },
       plan() + "#Intro |  |  | Document+Abs+" + plan() + "+ | new"},
      {"program", [&](Form& form) { fillProgram(form); }, "sub/run.exe |  |  | program+Rel+" + program() + "+ | same"},
      {"program, absolute", [&](Form& form) { fillProgram(form, true); },
       program() + " |  |  | program+Abs+" + program() + "+ | same"},
      {"web page", [&](Form& form) { fillWebPage(form); },
       "https://example.org/a b?c=%20#d | top |  | WebPage+++ | same"},
      {"mail", [&](Form& form) { fillEmail(form); }, "mailto:orders@example.org |  |  | Email+++ | same"},
  };
  const auto fillAndApply = [](const Case& each) {
    return [&](Form& form) {
      each.fill(form);
      click(form, "cmbSaveAndClose");
      EXPECT_FALSE(form.isOpen());
    };
  };
  Texts all;
  std::vector<Shape> tasks;
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    tasks.push_back(dropTask(page, 2 + tasks.size(), 5));
    edit(tasks.back(), fillAndApply(each));
    EXPECT_EQ(linksOf(tasks.back()), Texts{each.link});
    EXPECT_TRUE(memberMarked(tasks.back(), "pic_indicatorTaskDescription"));
    // To several shapes the link is added.
    edit({task, other}, fillAndApply(each));
    all.push_back(each.link);
    EXPECT_EQ(linksOf(task), all);
    EXPECT_EQ(linksOf(other), all);
  }
  for (const char* name : {"Order.vsdx", "Copy.vdx"}) {
    SCOPED_TRACE(name);
    save(folder + name);
    ASSERT_TRUE(map.Close());
    map = app.Documents().Open(folder + name);
    const auto shapes = map.Pages().Item(1).Shapes();
    EXPECT_EQ(linksOf(shapes.Item("A01")), all);
    EXPECT_EQ(linksOf(shapes.Item("A02")), all);
  }
}

TEST_F(Hyperlinks, TheLinksOfOneShapeAreReadEditedAndDeleted) {
  edit(task, [&](Form& form) {
    fillTask(form);
    click(form, "cmdNew");
    EXPECT_EQ(shown(form, "txtaddressTask_relative") + shown(form, "Comb_Page"), "");
    fillDocument(form);
    click(form, "cmdNew");
    fillWebPage(form);
    click(form, "cmbApplay");
    EXPECT_TRUE(form.isOpen());
    EXPECT_EQ(column(form, 2, 11), "Saved");
    // Nothing was changed since, and the fields are no second link.
    click(form, "cmbApplay");
    click(form, "cmbCancle");
    EXPECT_FALSE(form.isOpen());
  });
  EXPECT_TRUE(messages.empty());
  ASSERT_EQ(task.Hyperlinks().Count(), 3);
  const Texts before = linksOf(task);

  edit(task, [&](Form& form) {
    ASSERT_EQ(rowsOf(form).size(), 3u);
    EXPECT_EQ(column(form, 0, 1), "Order.vsdx") << "the drawing itself has no address";
    EXPECT_EQ(column(form, 0, 8), file);
    EXPECT_EQ(column(form, 1, 9), "sub/plan.doc");
    clickRow(form, 0);
    EXPECT_TRUE(form.find("Option_Task")->isOn());
    EXPECT_EQ(shown(form, "Comb_Page") + "/" + shown(form, "Comb_Task"), "B Packing/B01");
    EXPECT_EQ(textsOf(form, "Comb_Page"), (Texts{"A Orders", "B Packing", ""}));
    EXPECT_EQ(textsOf(form, "Comb_Task"), Texts{"B01"});
    EXPECT_EQ(shown(form, "Comb_Zoom"), "75%");
    // The first row's fields are kept when another one is clicked.
    type(form, "Comb_Page", "A Orders");
    form.find("Comb_Task")->dropDown();
    EXPECT_EQ(textsOf(form, "Comb_Task"), (Texts{"A01", "A02"}));
    type(form, "Comb_Task", "A02");
    EXPECT_EQ(shown(form, "txtDescription_Task"), "A Orders");
    clickRow(form, 1);
    EXPECT_EQ(column(form, 0, 5), "A02");
    EXPECT_EQ(column(form, 0, 0), "A Orders/A02");
    EXPECT_EQ(shown(form, "txtInternalLoc"), "Intro");
    EXPECT_EQ(column(form, 1, 11), "Edit");
    click(form, "CmdDelete");
    EXPECT_EQ(shown(form, "txtAddressRelative_Doc") + shown(form, "txtInternalLoc"), "");
    click(form, "cmbApplay");
    EXPECT_EQ(linksOf(task), (Texts{" | A Orders/A02 | zoom=75 | Task+Rel+" + file + "+Order.vsdx | same", before[2]}));
    clickRow(form, 0);
    click(form, "CmdDelete");
    clickRow(form, 0);
    click(form, "CmdDelete");
    EXPECT_TRUE(rowsOf(form).empty());
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(task.Hyperlinks().Count(), 0);
  EXPECT_FALSE(memberMarked(task, "pic_indicatorTaskDescription"));
  EXPECT_EQ(number(task, "User.flag_pic"), 0);

  // One step for each Apply.
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(task.Hyperlinks().Count(), 2);
  EXPECT_TRUE(memberMarked(task, "pic_indicatorTaskDescription"));
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(linksOf(task), before);
}

TEST_F(Hyperlinks, KindsThatGetASecondRowFromNew) {
  for (const auto& [option, fill] : std::vector<std::pair<const char*, std::function<void(Form&)>>>{
           {"txtAddress_email", [&](Form& form) { fillEmail(form); }},
           {"txtAddressWebPage", [&](Form& form) { fillWebPage(form); }},
           {"txtAddress_program", [&](Form& form) { fillProgram(form); }}}) {
    SCOPED_TRACE(option);
    edit(task, [&, option = option, fill = fill](Form& form) {
      while (!rowsOf(form).empty()) {
        clickRow(form, 0);
        click(form, "CmdDelete");
      }
      fill(form);
      click(form, "cmdNew");
      ASSERT_EQ(rowsOf(form).size(), 2u);
      EXPECT_EQ(column(form, 0, 1), column(form, 1, 1));
      EXPECT_NE(shown(form, option), "");
      click(form, "cmbSaveAndClose");
    });
    EXPECT_EQ(task.Hyperlinks().Count(), 3);
  }
}

TEST_F(Hyperlinks, AWrongMailAddressIsRefusedAndChangesAreNotLostUnasked) {
  answers = {MessageAnswer::Ok, MessageAnswer::Ok, MessageAnswer::No, MessageAnswer::Yes};
  edit(task, [&](Form& form) {
    click(form, "OptEmail");
    type(form, "txtAddress_email", "a@b");
    EXPECT_EQ(shown(form, "txtDescription_Email"), "a@b");
    click(form, "cmdNew");
    EXPECT_TRUE(rowsOf(form).empty());
    EXPECT_EQ(form.focused(), form.find("txtAddress_email"));
    click(form, "cmbSaveAndClose");
    EXPECT_TRUE(form.isOpen());
    click(form, "cmbCancle");
    EXPECT_TRUE(form.isOpen());
    click(form, "cmbCancle");
    EXPECT_FALSE(form.isOpen());
  });
  EXPECT_EQ(messages, (Texts{"Please enter a valid email address", "Please enter a valid email address",
                             "Are you sure you want to cancel without saving the changes you have made?",
                             "Are you sure you want to cancel without saving the changes you have made?"}));
  EXPECT_EQ(task.Hyperlinks().Count(), 0);
}

TEST_F(Hyperlinks, PathsGoFromRelativeToAbsoluteAndBack) {
  edit(task, [&](Form& form) {
    fillDocument(form);
    EXPECT_EQ(shown(form, "txtAddressRelative_Doc"), "sub/plan.doc");
    EXPECT_EQ(shown(form, "txtAddress_Document"), plan());
    EXPECT_FALSE(form.find("txtAddress_Document")->enabled());
    click(form, "OptAbsolute_Document");
    EXPECT_EQ(shown(form, "txtAddress_Document") + shown(form, "txtAddressRelative_Doc"), plan());
    EXPECT_FALSE(form.find("txtAddressRelative_Doc")->enabled());
    click(form, "OptRelative_Document");
    EXPECT_EQ(shown(form, "txtAddress_Document") + shown(form, "txtAddressRelative_Doc"), "sub/plan.doc");
    // An address of the web in the relative box is moved to the other one.
    type(form, "txtAddressRelative_Doc", "HTTP://x");
    EXPECT_EQ(shown(form, "txtAddress_Document") + shown(form, "txtAddressRelative_Doc"), "HTTP://x");
    EXPECT_TRUE(form.find("OptAbsolute_Document")->isOn() && form.find("txtAddress_Document")->enabled());
    click(form, "OptRelative_Document");
    EXPECT_TRUE(form.find("OptAbsolute_Document")->isOn());
    EXPECT_EQ(shown(form, "txtAddress_Document"), "HTTP://x");
    // Another drive.
    type(form, "txtAddress_Document", "D:\\a.doc");
    click(form, "OptRelative_Document");
    EXPECT_TRUE(form.find("OptAbsolute_Document")->isOn());
    EXPECT_EQ(shown(form, "txtAddress_Document"), "D:\\a.doc");
    // The program's two boxes both keep their text.
    fillProgram(form);
    click(form, "OptAbsolute_Program");
    click(form, "OptRelative_Program");
    EXPECT_EQ(shown(form, "txtAddress_program"), program());
    EXPECT_EQ(shown(form, "txtProgram_Rel"), "sub/run.exe");
    // Another drawing than the one that was offered, typed.
    click(form, "Option_Task");
    type(form, "txtaddressTask_relative", "sub/Other.vsdx");
    type(form, "Comb_Page", "P");
    click(form, "cmdNew");
    EXPECT_EQ(column(form, 0, 8), folder + "sub/Other.vsdx");
    form.close();
  });
  EXPECT_TRUE(messages.empty());
  chosenFile.clear();
  edit(task, [&](Form& form) {
    click(form, "Option_Document");
    type(form, "txtDescription_Document", "old");
    click(form, "Comdbrowes_Document");
    EXPECT_EQ(shown(form, "txtDescription_Document"), "");
  });
}

/// The address is kept as it is. What splits the record and the bookmark is lost when the link is read back.
TEST_F(Hyperlinks, NamesOfFilesThatTheFormatSplits) {
  struct Case {
    std::string name, location, bookmark, path, rest;
  };
  for (const Case& each : {
           Case{"a b.doc", "a b.doc", "", "a b.doc", ""},
           Case{"100%20.doc", "100%20.doc", "", "100%20.doc", ""},
           Case{"\"quoted\" 'n'.doc", "\"quoted\" 'n'.doc", "", "\"quoted\" 'n'.doc", ""},
           Case{"Заказ 注文.doc", "Заказ 注文.doc", "", "Заказ 注文.doc", ""},
           Case{"a+b.doc", "a+b.doc", "", "a", "b.doc"},
           Case{"a#b.doc", "a", "b.doc", "a#b.doc", ""},
       }) {
    SCOPED_TRACE(each.name);
    std::ofstream(folder + each.name) << "text";
    chosenFile = folder + each.name;
    const Shape fresh = dropTask(page, 4, 4);
    edit(fresh, [&](Form& form) {
      click(form, "Comdbrowes_Document");
      click(form, "cmbSaveAndClose");
    });
    EXPECT_EQ(linksOf(fresh), Texts{each.name + " |  |  | Document+Rel+" + folder + each.name + "+ | same"});
    edit(fresh, [&](Form& form) {
      EXPECT_EQ(
          column(form, 0, 1) + " | " + column(form, 0, 4) + " | " + column(form, 0, 8) + " | " + column(form, 0, 10),
          each.location + " | " + each.bookmark + " | " + folder + each.path + " | " + each.rest);
    });
  }
}

TEST_F(Hyperlinks, ALinkToAPageOfAnotherDrawing) {
  const Document sub = app.Documents().Add(session.templatePath());
  ASSERT_TRUE(sub.Pages().Item(1).SetName("S Sub"));
  dropTask(sub.Pages().Item(1));
  ASSERT_TRUE(sub.SaveAs(folder + "sub/Sub.vsdx"));
  ASSERT_TRUE(sub.Close());
  const int open = app.Documents().Count().or_(0);
  ASSERT_TRUE(app.ActiveWindow().Document() == map);
  edit(connector, [&](Form& form) {
    for (const char* option : {"Option_Document", "Option_Program", "Option_Web_page", "OptEmail"})
      EXPECT_FALSE(form.find(option)->enabled()) << option;
    chosenFile = folder + "sub/Sub.vsdx";
    click(form, "Combrowse_Task");
    EXPECT_NE(filterAsked.find("*.vsdx"), std::string::npos);
    EXPECT_EQ(shown(form, "txtaddressTask_relative"), "sub/Sub.vsdx");
    EXPECT_EQ(shown(form, "txtDescription_Task"), "Sub.vsdx");
    EXPECT_EQ(textsOf(form, "Comb_Page"), (Texts{"S Sub", ""}));
    form.find("Comb_Page")->selectRow(0);
    form.find("Comb_Task")->dropDown();
    ASSERT_EQ(textsOf(form, "Comb_Task"), Texts{"S01"});
    form.find("Comb_Task")->selectRow(0);
    EXPECT_EQ(shown(form, "txtDescription_Task"), "Sub.vsdx") << "of another drawing it is the user's";
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(app.Documents().Count(), open) << "the target is closed again";
  EXPECT_EQ(linksOf(connector), Texts{"sub/Sub.vsdx | S Sub/S01 |  | Task+Rel+" + folder + "sub/Sub.vsdx+ | same"});
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "S01");
  // Read back where the target is missing: the link keeps its page and Task.
  std::filesystem::remove(folder + "sub/Sub.vsdx");
  edit(connector, [&](Form& form) {
    clickRow(form, 0);
    EXPECT_EQ(shown(form, "Comb_Page") + "/" + shown(form, "Comb_Task"), "S Sub/S01");
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(linksOf(connector), Texts{"sub/Sub.vsdx | S Sub/S01 |  | Task+Rel+" + folder + "sub/Sub.vsdx+ | same"});
  // A link to a page alone shows no Task. Apply without a change adds nothing; and after Delete the drawing's own pages
  // are there again.
  edit(connector, [&](Form& form) {
    clickRow(form, 0);
    type(form, "Comb_Task", "");
    click(form, "cmbApplay");
    EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "Z99");
    clickRow(form, 0);
    click(form, "CmdDelete");
    type(form, "Comb_Page", "B Packing");
    type(form, "Comb_Task", "B01");
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(linksOf(connector), Texts{" | B Packing/B01 |  | Task+Rel+" + file + "+ | same"});
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "B01");
  edit(connector, [&](Form& form) {
    click(form, "cmbApplay");
    ASSERT_EQ(rowsOf(form).size(), 1u);
    clickRow(form, 0);
    click(form, "CmdDelete");
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(connector.Hyperlinks().Count(), 0);
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "Z99");
  EXPECT_EQ(connector.Name(), "Connector.Z99");
}

TEST_F(Hyperlinks, TheSubTaskBoxShowsItsTargetUntilTheLinkIsDeleted) {
  const auto linkToPacking = [&](Form& form) {
    type(form, "Comb_Page", "B Packing");
    type(form, "Comb_Task", "B01");
    click(form, "cmbApplay");
    // Written once more, the box still has it.
    clickRow(form, 0);
    type(form, "Comb_Zoom", "Page");
    click(form, "cmbSaveAndClose");
  };
  edit(box(task), linkToPacking);
  EXPECT_EQ(linksOf(box(task)), Texts{" | B Packing/B01 | zoom=-1 | Task+Rel+" + file + "+ | same"});
  EXPECT_EQ(text(task, "Prop.Linked"), "B01");
  EXPECT_TRUE(memberMarked(task, "PicIndicateHypersubTAsk"));
  edit(box(task), [&](Form& form) {
    clickRow(form, 0);
    click(form, "CmdDelete");
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(box(task).Hyperlinks().Count(), 0);
  EXPECT_EQ(text(task, "Prop.Linked"), "");
  EXPECT_FALSE(memberMarked(task, "PicIndicateHypersubTAsk"));
  edit(box(task), linkToPacking);
  EXPECT_EQ(text(task, "Prop.Linked"), "B01") << "the next link is no typed ID";
}

TEST_F(Hyperlinks, ADetailLineKeepsItsLinksThroughARedrawAndLosesItsIconWithTheLast) {
  ASSERT_TRUE(task.Cells("Prop.Guidelines").SetFormula("\"first;second\""));
  const auto line = [&] {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data3() == "controls2") return member;
    }
    return Shape();
  };
  ASSERT_TRUE(line());
  edit(line(), [&](Form& form) {
    fillDocument(form);
    click(form, "cmbSaveAndClose");
  });
  const Texts written{"sub/plan.doc#Intro |  |  | Document+Rel+" + plan() + "+ | new"};
  EXPECT_EQ(linksOf(line()), written);
  EXPECT_TRUE(memberMarked(task, "PicLinkedcontrols2"));
  ASSERT_TRUE(task.Cells("Prop.Guidelines").SetFormula("\"first;second;third\""));
  EXPECT_EQ(linksOf(line()), written);
  edit(line(), [&](Form& form) {
    clickRow(form, 0);
    click(form, "CmdDelete");
    click(form, "cmbSaveAndClose");
  });
  EXPECT_FALSE(memberMarked(task, "PicLinkedcontrols2"));
  EXPECT_TRUE(memberMarked(task, "Piccontrols2"));
  EXPECT_EQ(text(task, "Prop.controls2.Label"), "");
  ASSERT_TRUE(task.Cells("Prop.Guidelines").SetFormula("\"first;second\""));
  EXPECT_EQ(line().Hyperlinks().Count(), 0) << "a link that was deleted does not come back";
}

TEST_F(Hyperlinks, ALinkWithoutARecordIsNotShownAndIsGoneAfterApply) {
  ASSERT_TRUE(task.AddHyperlink().SetAddress("http://example.org"));
  edit(task, [&](Form& form) {
    EXPECT_TRUE(rowsOf(form).empty());
    fillEmail(form);
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(linksOf(task), Texts{"mailto:orders@example.org |  |  | Email+++ | same"});
}

/// An edited row replaces links of several shapes: every second one that differs goes, and the row is added.
TEST_F(Hyperlinks, AnEditedRowOnSeveralShapes) {
  const auto mail = [&](const char* address) {
    return [&, address](Form& form) {
      click(form, "OptEmail");
      type(form, "txtAddress_email", address);
      click(form, "cmbApplay");
    };
  };
  for (const char* address : {"a@b.c", "d@e.f", "g@h.i"}) edit({task, other}, mail(address));
  ASSERT_EQ(task.Hyperlinks().Count(), 3);
  edit({task, other}, [&](Form& form) {
    click(form, "OptEmail");
    type(form, "txtAddress_email", "x@y.z");
    click(form, "cmbApplay");
    type(form, "txtAddress_email", "new@y.z");
    click(form, "cmbApplay");
    EXPECT_EQ(rowsOf(form).size(), 1u);
  });
  const Texts left{"mailto:d@e.f |  |  | Email+++ | same", "mailto:x@y.z |  |  | Email+++ | same",
                   "mailto:new@y.z |  |  | Email+++ | same"};
  EXPECT_EQ(linksOf(task), left);
  EXPECT_EQ(linksOf(other), left);
}

TEST_F(Hyperlinks, CorrectingARowBeforeItIsWrittenReplacesNothing) {
  edit({task, other}, [&](Form& form) {
    fillEmail(form);
    click(form, "cmbSaveAndClose");
  });
  edit({task, other}, [&](Form& form) {
    click(form, "OptEmail");
    type(form, "txtAddress_email", "z@b.c");
    click(form, "cmbApplay");
    form.find("lstLinks")->click();
    type(form, "txtAddress_email", "wrong@b.c");
    click(form, "cmdNew");
    clickRow(form, 1);
    type(form, "txtAddress_email", "y@b.c");
    clickRow(form, 2);
    click(form, "CmdDelete");
    click(form, "cmbSaveAndClose");
  });
  const Texts all{"mailto:orders@example.org |  |  | Email+++ | same", "mailto:z@b.c |  |  | Email+++ | same",
                  "mailto:y@b.c |  |  | Email+++ | same"};
  EXPECT_EQ(linksOf(task), all);
  EXPECT_EQ(linksOf(other), all);
}

/// What is typed after a file was chosen is another file.
TEST_F(Hyperlinks, ATypedPathIsNotThatOfTheFileChosenBefore) {
  const std::string unc = "\\\\server\\maps\\x.vsdx";
  struct Case {
    std::string name;
    std::function<void(Form&)> fill;
    std::string link;
  };
  for (const Case& each : std::vector<Case>{
           {"a share",
            [&](Form& form) {
              click(form, "Option_Task");
              click(form, "OptAbsolute_Task");
              type(form, "txtAddress_Task", unc);
              type(form, "Comb_Page", "S");
            },
            unc + " | S |  | Task+Abs+" + unc + "+ | same"},
           {"a share, relative first",
            [&](Form& form) {
              click(form, "Option_Task");
              type(form, "txtaddressTask_relative", unc);
              click(form, "OptAbsolute_Task");
              type(form, "Comb_Page", "S");
            },
            unc + " | S |  | Task+Abs+" + unc + "+ | same"},
           {"another document",
            [&](Form& form) {
              fillDocument(form);
              type(form, "txtAddressRelative_Doc", "other.doc");
              click(form, "OptAbsolute_Document");
              click(form, "OptRelative_Document");
            },
            "other.doc#Intro |  |  | Document+Abs++ | new"},
           {"a document after New",
            [&](Form& form) {
              fillDocument(form);
              click(form, "cmdNew");
              click(form, "OptRelative_Document");
              type(form, "txtAddressRelative_Doc", "other.doc");
              click(form, "cmdNew");
              clickRow(form, 0);
              click(form, "CmdDelete");
            },
            "other.doc |  |  | Document+Rel++ | same"},
       }) {
    SCOPED_TRACE(each.name);
    const Shape fresh = dropTask(page, 4, 4);
    edit(fresh, [&](Form& form) {
      each.fill(form);
      click(form, "cmbSaveAndClose");
    });
    EXPECT_EQ(linksOf(fresh), Texts{each.link});
  }
  // Links of older drawings count as relative, also with a full address.
  const Hyperlink old = task.AddHyperlink();
  ASSERT_TRUE(old.SetAddress("C:\\Maps\\x.vsd") && old.SetSubAddress("P") && old.SetFrame("Task+Rel+C:\\Maps\\+x.vsd"));
  edit(task, [&](Form& form) {
    clickRow(form, 0);
    click(form, "OptAbsolute_Task");
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(linksOf(task), Texts{"C:\\Maps\\x.vsd | P |  | Task+Abs+C:\\Maps\\x.vsd+x.vsd | same"});
}

TEST_F(Hyperlinks, ALinkOfEachKindIsTakenOverFromAnotherShape) {
  Texts written;
  edit(task, [&](Form& form) {
    fillTask(form);
    click(form, "cmdNew");
    fillDocument(form);
    click(form, "cmdNew");
    fillProgram(form, true);
    click(form, "cmbApplay");
    form.find("lstLinks")->click();
    fillWebPage(form);
    click(form, "cmbApplay");
    form.find("lstLinks")->click();
    fillEmail(form);
    click(form, "cmbSaveAndClose");
  });
  ASSERT_EQ(task.Hyperlinks().Count(), 5);
  struct Case {
    const char *option, *button;
    Texts row;
  };
  const std::vector<Case> cases{
      {"Option_Task",
       "btncopypreviouslyTask",
       {"Order.vsdx", "to packing", "B Packing", "B01", "zoom=75", "R", "N", file, ""}},
      {"Option_Document", "btnCopypreviouslyDoc", {"sub/plan.doc", "plan.doc", "Intro", "R", "Y", plan(), ""}},
      {"Option_Program", "btncopypreviouslywebpage", {program(), "run.exe", "A", program(), ""}},
      {"Option_Web_page", "Command6", {"https://example.org/a b?c=%20#d", "Web", "top", "N", ""}},
      {"OptEmail", "btnCopypreviouslyEmail", {"mailto:orders@example.org", "orders@example.org"}},
  };
  edit(other, [&](Form& form) {
    for (const Case& each : cases) {
      SCOPED_TRACE(each.option);
      click(form, each.option);
      inPicker = [&](Form& picker) {
        ASSERT_EQ(picker.find("lstLinks")->rows().size(), 1u);
        EXPECT_EQ(picker.find("lstLinks")->rows().front().columns, each.row);
        EXPECT_EQ(picker.find("lstLinks")->columnTitles.size(), each.row.size());
        click(picker, "BtnOK");  // without a row it copies nothing
      };
      const std::string before = shown(form, "txtDescription_Task");
      click(form, each.button);
      EXPECT_EQ(shown(form, "txtDescription_Task"), before);
      inPicker = [&](Form& picker) {
        clickRow(picker, 0);
        click(picker, "BtnOK");
      };
      click(form, each.button);
      click(form, "cmbApplay");
      form.find("lstLinks")->click();
    }
    form.close();
  });
  EXPECT_EQ(linksOf(other), linksOf(task));
  // Both Tasks have them now. Links to the drawing itself repeat; the others are listed once.
  edit(box(other), [&](Form& form) {
    std::size_t listed = 0;
    inPicker = [&](Form& picker) { listed = picker.find("lstLinks")->rows().size(); };
    click(form, "btncopypreviouslyTask");
    EXPECT_EQ(listed, 2u);
  });
  edit(other, [&](Form& form) {
    std::size_t listed = 0;
    inPicker = [&](Form& picker) { listed = picker.find("lstLinks")->rows().size(); };
    click(form, "btnCopypreviouslyDoc");
    EXPECT_EQ(listed, 1u);
  });
}

TEST_F(Hyperlinks, BookmarksOfADocumentAreListedAndTakenOver) {
  const std::string documents = QUORVEL_SOURCE_FOLDER "/tests/data/word/";
  for (const char* name : {"bookmarks.doc", "no_bookmarks.doc"}) std::filesystem::copy(documents + name, folder + name);
  std::ofstream(folder + "plan.docx") << "text";
  std::ofstream(folder + "old.doc") << "text";
  edit(task, [&](Form& form) {
    const auto browse = [&](const std::string& name) {
      messages.clear();
      chosenFile = folder + name;
      click(form, "Comdbrowes_Document");
      click(form, "Command5");
    };
    click(form, "Command5");
    EXPECT_TRUE(messages.empty()) << "without a path nothing happens";
    for (const char* name : {"plan.docx", "old.doc"}) {
      browse(name);
      EXPECT_EQ(messages, Texts{"Quorvel cannot browse for bookmarks in this type of document."}) << name;
    }
    browse("no_bookmarks.doc");
    EXPECT_EQ(messages, Texts{"There are no bookmarks in this document"});
    std::string chosen;
    inBookmarks = [&](Form& list) {
      ASSERT_EQ(list.name(), "frmBookMark");
      chosen = textsOf(list, "lstBookmarks").at(2);
      list.find("lstBookmarks")->selectRow(2);
      click(list, "btnCancel");
    };
    browse("bookmarks.doc");
    EXPECT_EQ(shown(form, "txtInternalLoc"), "");
    inBookmarks = [&](Form& list) {
      list.find("lstBookmarks")->selectRow(2);
      click(list, "btnOK");
    };
    click(form, "Command5");
    EXPECT_FALSE(chosen.empty());
    EXPECT_EQ(shown(form, "txtInternalLoc"), chosen);
    // A relative path that was typed is no file that could be read.
    type(form, "txtAddressRelative_Doc", "no_bookmarks.doc");
    click(form, "Command5");
    EXPECT_EQ(messages, Texts{"Quorvel cannot browse for bookmarks in this type of document."});
    form.close();
  });
}

TEST_F(Hyperlinks, ABrowserIsFollowedUntilTheDialogCloses) {
  BrowserEvents events;
  session.platform().onBrowser = [&](BrowserEvents given) {
    events = std::move(given);
    return std::make_unique<Browser>();
  };
  edit(task, [&](Form& form) {
    click(form, "Option_Web_page");
    click(form, "Command1");
    ASSERT_TRUE(events.navigated);
    events.navigated("https://example.org/");
    events.navigated("https://example.org/next");
    EXPECT_EQ(shown(form, "txtAddressWebPage"), "https://example.org/next");
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(linksOf(task), Texts{"https://example.org/next |  |  | WebPage+++ | same"});
}

/// Before the first save there is no folder for relative paths, and no file for links to Tasks.
class UnsavedHyperlinks : public HyperlinkTest {};

TEST_F(UnsavedHyperlinks, OffersAbsolutePathsAlone) {
  edit(task, [&](Form& form) {
    EXPECT_EQ(messages, Texts{"You should save the document first"});
    EXPECT_FALSE(form.find("OptRelative_Document")->enabled());
    type(form, "txtAddress_Document", "C:\\a.doc");
    click(form, "Option_Task");
    EXPECT_EQ(messages.size(), 2u);
    EXPECT_TRUE(form.find("Option_Document")->isOn());
    EXPECT_EQ(shown(form, "txtAddress_Document"), "C:\\a.doc") << "what was typed is kept";
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(linksOf(task), Texts{"C:\\a.doc |  |  | Document+Abs+C:\\a.doc+ | same"});
  edit(connector, [&](Form& form) {
    EXPECT_EQ(messages, Texts{"You should save the document first"}) << "from the dialog alone";
    EXPECT_FALSE(form.find("Option_Task")->isOn());
    EXPECT_FALSE(form.find("Option_Document")->enabled());
    click(form, "cmbSaveAndClose");
  });
  EXPECT_EQ(connector.Hyperlinks().Count(), 0);
}

}  // namespace
}  // namespace quorvel
