// The texts of hyperlinks: records, zooms, mail addresses, and paths as seen from a folder.
#include <gtest/gtest.h>

#include "hyperlinks/link_paths.h"
#include "hyperlinks/link_record.h"

namespace quorvel::addin {
namespace {

TEST(HyperlinkTexts, RecordsAreSplitAtEveryPlusAndEmptyFieldsAreSkipped) {
  struct Case {
    const char *record, *kind, *relOrAbs, *absPath, *docName;
  };
  for (const Case& each :
       {Case{"Task+Rel+C:\\Maps\\A+B.vsd+", "Task", "Rel", "C:\\Maps\\A", "B.vsd"},
        Case{"Task+Rel++Order.vsd", "Task", "Rel", "Order.vsd", ""},
        Case{"Document+Abs+C:\\a b\\#1 %20.doc+", "Document", "Abs", "C:\\a b\\#1 %20.doc", ""},
        Case{"program+Abs+/opt/Заказ/+run.exe", "program", "Abs", "/opt/Заказ/", "run.exe"},
        Case{"Email", "Email", "", "", ""}, Case{"Email+++", "Email", "", "", ""}, Case{"", "", "", "", ""}}) {
    EXPECT_EQ(getTypeOfHyperLink("hyperLinkType", each.record), each.kind) << each.record;
    EXPECT_EQ(getTypeOfHyperLink("relOrAbs", each.record), each.relOrAbs) << each.record;
    EXPECT_EQ(getTypeOfHyperLink("absPath", each.record), each.absPath) << each.record;
    EXPECT_EQ(getTypeOfHyperLink("docName", each.record), each.docName) << each.record;
    EXPECT_EQ(getTypeOfHyperLink("other", each.record), "") << each.record;
  }
  EXPECT_EQ(linkRecord("Task", "Rel", "C:\\Maps\\Order.vsd", ""), "Task+Rel+C:\\Maps\\Order.vsd+");
  EXPECT_EQ(getSubAdd("pageName", "A/B/C") + "," + getSubAdd("taskName", "A/B/C"), "A,B");
  EXPECT_EQ(getSubAdd("taskName", "Page-1") + getSubAdd("other", "A/B"), "");
  EXPECT_EQ(getPageTaskName("a <b> c"), "a%20%3cb%3e%20c");
  EXPECT_EQ(getPageTaskNamWithSpace("a%20%3cb%3e%3C"), "a <b>%3C") << "capital letters are no escape";
}

TEST(HyperlinkTexts, ZoomsAndMailAddresses) {
  for (const std::string_view choice : zoomChoices) {
    const bool isWidth = choice == "width";
    EXPECT_EQ(zoomChoiceOf(zoomText(choice)), isWidth ? "Width" : choice);
  }
  EXPECT_EQ(zoomText("Width"), "zoom=-2") << "as it is shown, so as it is written again";
  EXPECT_EQ(zoomText("Page") + "," + zoomText("75%") + "," + zoomText("80%") + zoomText(""), "zoom=-1,zoom=75,");
  EXPECT_EQ(zoomChoiceOf("ZOOM:33"), "33%");
  for (const char* valid : {"", "a@b.c", "mailto:a@b.c", "a@b.c@d"}) EXPECT_TRUE(isValidEmail(valid)) << valid;
  for (const char* wrong : {"a@b", "a.b", "a.b@c", "@"}) EXPECT_FALSE(isValidEmail(wrong)) << wrong;
}

TEST(HyperlinkTexts, PathsRelativeToAFolder) {
  struct Case {
    const char *from, *to, *way;
  };
  for (const Case& each : {
           Case{"C:\\Maps\\", "C:\\Maps\\x.vsd", "x.vsd"},
           Case{"C:\\Maps\\", "C:\\Maps\\sub\\x y.vsd", "sub\\x y.vsd"},
           Case{"C:\\Maps\\", "C:\\Maps\\", ""},
           Case{"C:\\Maps\\A\\", "C:\\Maps\\B\\x.vsd", "..\\B\\x.vsd"},
           Case{"C:\\Maps\\A\\B\\", "C:\\x.vsd", "..\\..\\..\\x.vsd"},
           Case{"c:\\MAPS\\", "C:\\Maps\\x.vsd", "x.vsd"},
           Case{"C:\\Maps\\", "C:\\MapsOld\\x.vsd", "..\\MapsOld\\x.vsd"},
           Case{"C:\\", "C:\\sub\\x.vsd", ".\\sub\\x.vsd"},
           Case{"C:\\Maps", "C:\\Maps\\x.vsd", ".\\x.vsd"},
           Case{"C:\\Maps\\", "D:\\x.vsd", ""},
           Case{"\\\\server\\share\\a\\", "\\\\server\\share\\b\\x.vsd", "..\\b\\x.vsd"},
           Case{"\\\\server\\share\\a\\", "C:\\x.vsd", ""},
           Case{"C:\\Maps\\", "/home/x.vsd", ""},
           Case{"C:\\Maps\\", "x.vsd", ""},
           Case{"/home/a/maps/", "/home/a/maps/x.vsdx", "x.vsdx"},
           Case{"/home/a/maps/", "/home/a/#1 ёж.vsdx", "../#1 ёж.vsdx"},
           Case{"/home/", "/data/sub/x.vsdx", "../data/sub/x.vsdx"},
           Case{"/", "/data/x.vsdx", "data/x.vsdx"},
           Case{"/Home/", "/home/x", "../home/x"},
           Case{"/home/", "C:\\x.vsd", ""},
           Case{"", "C:\\x.vsd", ""},
       })
    EXPECT_EQ(get_relative_path_to(each.from, each.to), each.way) << each.from << " to " << each.to;
  const std::string deep = "C:\\Maps\\" + std::string(255, 'n');
  EXPECT_EQ(get_relative_path_to("C:\\Maps\\", deep), std::string(255, 'n'));
  EXPECT_EQ(get_relative_path_to("C:\\Maps\\", deep + "nnnn"), "") << "the system's buffer holds no more";

  EXPECT_EQ(StripTerminator(std::string_view("ab\0c", 4)), "ab");
  EXPECT_EQ(GetPath01("C:\\a\\b.doc") + "," + GetPath01("a/b.doc") + "," + GetPath01("b.doc"), "C:\\a\\,a/,b.doc");
  EXPECT_EQ(folderOf("b.doc") + fileNameOf("C:\\a/b.doc"), "b.doc");
  EXPECT_TRUE(haveSameRoot("C:\\a", "c:\\b") && haveSameRoot("/a", "/b") && !haveSameRoot("C:\\a", "/b"));
  EXPECT_TRUE(holdsFullPath("C:\\a") && holdsFullPath("/a") && !holdsFullPath("..\\a") && !holdsFullPath("C:a"));
}

}  // namespace
}  // namespace quorvel::addin
