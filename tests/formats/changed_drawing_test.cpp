// What the engine changed is in the saved file: new pages and masters, deleted members, names, pictures,
// properties.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "formats/drawing_files.h"
#include "formats/formats.h"
#include "formats/normal_form.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::testing {
namespace {

using host::CellKey;
using host::Sheet;
using host::SheetId;
using host::SheetKind;
using host::Value;

const host::DocumentFormat& vsdx() { return *formatFor("a.vsdx"); }
CellKey key(const char* name) { return *host::parseCellName(name); }

/// A drawing made without any file: one master with a member, two pages, an instance, a picture.
host::DocumentId makeDrawing(host::Store& store) {
  const host::DocumentId id = store.addDocument("map.vsdx");
  const host::MasterId master = store.addMaster(id, "Task");
  const host::PageId contents = store.master(master)->contents;
  const SheetId top = store.addShape(contents, {}, SheetKind::Group);
  const SheetId member = store.addShape(contents, top, SheetKind::Shape);
  store.sheet(top)->local(key("Width")).value = Value::number(1.5);
  store.sheet(top)->local(key("Geometry1.NoFill")).value = Value::number(0);
  store.sheet(top)->local(key("Geometry1.X1")).value = Value::number(0);
  store.sheet(top)->find(host::SectionNumber::Geometry)->rows.back().type = 138;

  const host::PageId page = store.addPage(id, "AB <Order> & \"entry\"");
  const host::PageId back = store.addPage(id, "Back");
  store.page(back)->background = true;
  store.page(page)->backPage = back;
  const SheetId task = store.addShape(page, {}, SheetKind::Group);
  store.sheet(task)->name = store.sheet(task)->universalName = "AB01";
  store.sheet(task)->master = master;
  store.sheet(task)->prototype = top;
  const SheetId inner = store.addShape(page, task, SheetKind::Shape);
  store.sheet(inner)->prototype = member;
  host::Row& row = [&]() -> host::Row& {
    store.sheet(task)->local(key("Prop.Task_ID")).value = Value::text("AB01");
    return store.sheet(task)->find(host::SectionNumber::Property)->rows.front();
  }();
  row.name = host::intern("Task_ID");
  store.sheet(task)->text = std::make_shared<host::TextBody>(
      host::TextBody{{host::TextPiece::Characters, 0, "one\ntwo \x01\xFF "}, {host::TextPiece::Field, 0, "AB01"}});

  auto picture = std::make_shared<host::ForeignData>();
  *picture = {"Bitmap", "PNG", "png", "picture bytes", {}};
  for (int i = 0; i < 2; ++i) store.sheet(store.addShape(page, {}, SheetKind::Foreign))->foreign = picture;
  store.page(page)->connects.push_back({3, "BeginX", 9, 1, "PinX", 3});
  store.document(id)->properties.templateName = "Quorvel.vstx";
  store.document(id)->properties.title = "Orders";
  store.document(id)->properties.timeSaved = "2020-02-03T04:05:06Z";
  store.document(id)->properties.custom["Owner"] = "A & B";
  store.document(id)->colours[24] = 0x7F0001;
  return id;
}

TEST(NewDrawing, IsACompletePackage) {
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  host::Store store;
  const host::DocumentId id = makeDrawing(store);
  ASSERT_EQ(vsdx().save(store, id, file), "");
  ASSERT_EQ(folder.count(), 1u) << "no other file is left in the folder";

  host::Store other;
  const host::OpenResult opened = vsdx().open(other, file);
  ASSERT_TRUE(opened.document) << opened.error;
  const host::Document& document = *other.document(opened.document);
  EXPECT_EQ(document.properties.templateName, "Quorvel.vstx");
  EXPECT_EQ(document.properties.timeSaved, "2020-02-03T04:05:06Z");
  EXPECT_EQ(document.properties.custom.at("Owner"), "A & B");
  EXPECT_EQ(document.colours.at(24), 0x7F0001u);
  ASSERT_EQ(document.pages.size(), 2u);
  const host::Page& page = *other.page(document.pages[0]);
  EXPECT_EQ(page.name, "AB <Order> & \"entry\"");
  EXPECT_EQ(page.backPage, document.pages[1]);
  const Sheet& task = *other.sheet(page.shapes.at(0));
  EXPECT_EQ(other.master(task.master)->name, "Task");
  EXPECT_EQ(host::cellNumber(other, task.id, key("Width")), 1.5);
  EXPECT_EQ(host::cellText(other, task.id, key("Prop.task_id")), "AB01");
  EXPECT_EQ(other.sheet(task.children.at(0))->prototype, other.sheet(task.prototype)->children.at(0));
  ASSERT_TRUE(task.text);
  EXPECT_EQ(task.text->front().text, "one\ntwo \xEF\xBF\xBD ") << "what XML cannot hold is left out";
  EXPECT_EQ(other.sheet(page.shapes.at(2))->foreign->bytes, "picture bytes");
  EXPECT_EQ(page.connects.size(), 1u);
  EXPECT_FALSE(partOf(file, "/visio/media/image1.png").empty());
  EXPECT_TRUE(partOf(file, "/visio/media/image2.png").empty()) << "equal pictures share a part";
}

TEST(ChangedDrawing, KeepsPartNamesAndGivesNewOnes) {
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  host::Store store;
  ASSERT_EQ(vsdx().save(store, makeDrawing(store), file), "");
  const host::DocumentId id = vsdx().open(store, file).document;
  ASSERT_TRUE(id);
  // Delete the first page, insert a new one before the rest, and add a master from another drawing with its carried
  // data.
  store.document(id)->pages.erase(store.document(id)->pages.begin());
  store.addPage(id, "New", 0);
  const host::DocumentId other = vsdx().open(store, file).document;
  const host::MasterId copy = store.addMaster(id, "Copy");
  store.master(copy)->extras = store.master(store.document(other)->masters.front())->extras;
  ASSERT_EQ(vsdx().save(store, id, file), "");

  EXPECT_NE(partOf(file, "/visio/pages/pages.xml").find("Name=\"New\""), std::string::npos);
  EXPECT_FALSE(partOf(file, "/visio/pages/page1.xml").empty());
  EXPECT_FALSE(partOf(file, "/visio/pages/page2.xml").empty());
  EXPECT_TRUE(partOf(file, "/visio/pages/page3.xml").empty());
  EXPECT_FALSE(partOf(file, "/visio/masters/master2.xml").empty());
  EXPECT_TRUE(partOf(file, "/visio/media/image1.png").empty()) << "deleted with its page";
  const host::OpenResult again = vsdx().open(store, file);
  ASSERT_TRUE(again.document) << again.error;
  EXPECT_EQ(store.page(store.document(again.document)->pages[1])->name, "Back");
  EXPECT_EQ(store.master(store.document(again.document)->masters[1])->name, "Copy");
}

TEST(ChangedDrawing, DeletedMembersStayDeletedAndUnmentionedOnesAreMade) {
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  const std::string master =
      "<Shapes><Shape ID='5' Type='Group'><Shapes><Shape ID='6' Type='Group'><Shapes><Shape ID='8'/></Shapes></Shape>"
      "<Shape ID='7' Type='Shape'/></Shapes></Shape></Shapes>";
  Parts parts = partsWithMaster(master);
  setPage(parts, "<Shapes><Shape ID='1' Type='Group' Master='2'/></Shapes>");
  writeFile(file, zipOf(parts));
  host::Store store;
  const auto open = [&] {
    const host::OpenResult opened = vsdx().open(store, file);
    EXPECT_TRUE(opened.document) << opened.error;
    return opened.document;
  };
  const auto instanceOf = [&](host::DocumentId id) -> Sheet& {
    return *store.sheet(store.page(store.document(id)->pages[0])->shapes[0]);
  };
  const host::DocumentId first = open();
  ASSERT_EQ(instanceOf(first).children.size(), 2u);
  EXPECT_EQ(store.sheet(instanceOf(first).children[0])->children.size(), 1u);
  store.takeSubtree(instanceOf(first).children[0]);
  ASSERT_EQ(vsdx().save(store, first, file), "");
  EXPECT_EQ(instanceOf(open()).children.size(), 1u);
  ASSERT_EQ(vsdx().save(store, open(), file), "");
  EXPECT_EQ(instanceOf(open()).children.size(), 1u);
}

TEST(ChangedDrawing, MarksNamesThatAUserGave) {
  TemporaryFolder folder;
  const std::string file = folder.file("map.vsdx");
  Parts parts = plainParts();
  setPage(parts, "<Shapes><Shape ID='1' Name='Task' NameU='Task' Type='Shape'/><Shape ID='2' NameU='Only'/></Shapes>");
  writeFile(file, zipOf(parts));
  host::Store store;
  const host::DocumentId id = vsdx().open(store, file).document;
  ASSERT_TRUE(id);
  const std::vector<SheetId> shapes = store.page(store.document(id)->pages[0])->shapes;
  EXPECT_EQ(store.sheet(shapes[1])->name, "Only");
  store.sheet(shapes[0])->name = "AB01";
  ASSERT_EQ(vsdx().save(store, id, file), "");
  const std::string page = partOf(file, "/visio/pages/page1.xml");
  EXPECT_NE(page.find(R"(NameU="Task" Name="AB01" IsCustomName="1")"), std::string::npos) << page;
  EXPECT_NE(page.find(R"(<Shape ID="2" NameU="Only"/>)"), std::string::npos) << page;
}

TEST(Saving, LeavesTheOldFileWhenItFails) {
  TemporaryFolder folder;
  host::Store store;
  const host::DocumentId id = makeDrawing(store);
  const std::string file = folder.file("map.vsdx");
  writeFile(file, "precious");

  EXPECT_NE(vsdx().save(store, id, folder.file("nowhere/map.vsdx")).find("folder does not exist"), std::string::npos);
  std::filesystem::create_directory(folder.file("folder.vsdx"));
  EXPECT_NE(vsdx().save(store, id, folder.file("folder.vsdx")).find("a folder has that name"), std::string::npos);
  EXPECT_NE(vsdx().save(store, id, folder.file("map.txt")).find("ending"), std::string::npos);
  EXPECT_NE(vsdx().save(store, {}, file).find("closed"), std::string::npos);
  EXPECT_EQ(readFile(file), "precious");
  EXPECT_EQ(folder.count(), 2u) << "no other file is left in the folder";

  // The superuser may write anything, so that the refusal cannot be seen there.
  chmod(file.c_str(), 0440);
  if (geteuid() != 0) {
    EXPECT_NE(vsdx().save(store, id, file).find("read-only"), std::string::npos);
    EXPECT_EQ(readFile(file), "precious");
  }
  chmod(file.c_str(), 0640);
  std::filesystem::create_symlink(file, folder.file("link.vsdx"));
  ASSERT_EQ(vsdx().save(store, id, folder.file("link.vsdx")), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link.vsdx"))) << "the link's target is replaced";
  EXPECT_TRUE(normalForm(file).has());
  struct stat status;
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u) << "permissions stay";
}

}  // namespace
}  // namespace quorvel::formats::testing
