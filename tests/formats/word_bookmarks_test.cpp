// Bookmark names of word-processor documents, also of damaged and hostile ones.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "formats/drawing_files.h"
#include "formats/word/bookmarks.h"
#include "fuzz/memory_file.h"

namespace quorvel::formats::testing {
namespace {

using Names = std::vector<std::string>;

const Names expectedNames{"apple", "Invoice", "Kapitel_Übersicht", "Order_2", "zebra", "приложение", "目次", "𠮷野"};

std::string sample(const std::string& name) { return QUORVEL_SOURCE_FOLDER "/tests/data/word/" + name; }

void putNumber(std::string& bytes, std::size_t at, std::size_t size, std::uint32_t number) {
  for (std::size_t i = 0; i < size; ++i) bytes.at(at + i) = static_cast<char>(number >> 8 * i & 0xFF);
}

/// Where the parts of bookmarks.doc are in the file.
struct Places {
  explicit Places(const std::string& bytes) {
    const auto placeOf = [&](std::string_view part) {
      const std::size_t at = bytes.find(part);
      EXPECT_NE(at, std::string::npos);
      return at;
    };
    using namespace std::string_view_literals;
    document = placeOf("\xEC\xA5"sv);
    namesEntry = document + 0x142;
    names = placeOf("\xFF\xFF\x0A\x00\x00\x00\x05\x00z\0e\0"sv);
    documentEntry = placeOf("W\0o\0r\0d\0D\0"sv);
    // The header has the sectors with the tables; all of their numbers are below 256 here.
    const auto sectorNamedAt = [&](std::size_t at) { return 512 * (1 + std::size_t(bytes.at(at))); };
    directory = sectorNamedAt(48);
    miniSectors = sectorNamedAt(60);
    sectors = sectorNamedAt(76);
  }
  std::size_t document, namesEntry, names, directory, documentEntry, miniSectors, sectors;
};

Maybe<Names> namesIn(const std::string& bytes) { return bookmarksOfDocument(fuzz::MemoryFile(bytes).name()); }

TEST(WordBookmarks, AreNamedInAlphabeticalOrderWithoutHiddenOnes) {
  EXPECT_EQ(bookmarksOfDocument(sample("bookmarks.doc")).or_({}), expectedNames);
  const Maybe<Names> none = bookmarksOfDocument(sample("no_bookmarks.doc"));
  EXPECT_TRUE(none.has() && none->empty());
  const Names many = bookmarksOfDocument(sample("many_bookmarks.doc")).or_({});
  ASSERT_EQ(many.size(), 150u);
  EXPECT_EQ(many.front(), "Step_1");
  EXPECT_EQ(many.back(), "Step_99");
}

TEST(WordBookmarks, HalfACharacterBecomesTheReplacementCharacter) {
  std::string bytes = readFile(sample("bookmarks.doc"));
  const std::size_t zebra = Places(bytes).names + 8;
  putNumber(bytes, zebra, 2, 0xD842);
  putNumber(bytes, zebra + 8, 2, 0xDFB7);
  Names names = expectedNames;
  names.erase(names.begin() + 4);
  names.insert(names.end() - 1, "\uFFFDebr\uFFFD");
  EXPECT_EQ(namesIn(bytes).or_({}), names);
}

TEST(WordBookmarks, OnlyDocumentsOfTheFormatAreRead) {
  TemporaryFolder folder;
  const std::string pipe = folder.file("pipe.doc"), huge = folder.file("huge.doc");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  writeFile(huge, readFile(sample("bookmarks.doc")));
  std::filesystem::resize_file(huge, (512u << 20) + 1);
  for (const std::string& file : {pipe, huge, folder.file("missing.doc"), sample(""), sample("README.md"),
                                  std::string("/dev/zero"), std::string()})
    EXPECT_FALSE(bookmarksOfDocument(file).has()) << file;
}

TEST(WordBookmarks, NothingIsReadOfDamagedDocuments) {
  const std::string whole = readFile(sample("bookmarks.doc"));
  const Places at(whole);
  const std::uint32_t directorySector = static_cast<std::uint32_t>(at.directory / 512 - 1);
  const struct {
    const char* what;
    std::size_t place;
    std::size_t size;
    std::uint32_t number;
  } cases[] = {
      {"no compound file", 0, 1, 0},
      {"sectors of 2 GB", 30, 2, 31},
      {"mini sectors of 1 byte", 32, 2, 0},
      {"more tables of sectors than the file has space for", 44, 4, 0xFFFFFFFF},
      {"a table of sectors beyond the end", 76, 4, 0x00FFFFFF},
      {"directory beyond the end", 48, 4, 0x00FFFFFF},
      {"directory without end", at.sectors + 4 * directorySector, 4, directorySector},
      {"no root", at.directory + 66, 1, 2},
      {"root without entries", at.directory + 76, 4, 0xFFFFFFFF},
      {"mini sectors beyond the end", at.directory + 116, 4, 0x00FFFFFF},
      {"fewer mini sectors than the streams have", at.directory + 120, 4, 512},
      {"table of mini sectors beyond the end", 60, 4, 0x00FFFFFF},
      {"document of another name", at.documentEntry, 1, 'w'},
      {"document is a folder", at.documentEntry + 66, 1, 1},
      {"document larger than the file", at.documentEntry + 120, 4, 0xFFFFFFFF},
      {"document too short", at.documentEntry + 120, 4, 0x145},
      {"document beyond the end", at.documentEntry + 116, 4, 0x00FFFFFF},
      {"another mark", at.document, 2, 0xA5DC},
      {"an older release", at.document + 2, 2, 0x0068},
      {"encrypted", at.document + 11, 1, 0x13},
      {"the other table stream", at.document + 11, 1, 0x10},
      {"too many 16-bit numbers", at.document + 0x20, 2, 0xFFFF},
      {"too many 32-bit numbers", at.document + 0x3E, 2, 0xFFFF},
      {"too few places", at.document + 0x98, 2, 21},
      {"names beyond the end of the stream", at.namesEntry, 4, 0x00FFFFFF},
      {"names begin at the largest number", at.namesEntry, 4, 0xFFFFFFFF},
      {"names larger than the limit", at.namesEntry + 4, 4, 0xFFFFFFFF},
      {"names longer than the stream", at.namesEntry + 4, 4, 0x00100000},
      {"names shorter than their header", at.namesEntry + 4, 4, 5},
      {"names of 8-bit characters", at.names, 2, 10},
      {"more names than any document has", at.names + 2, 2, 0xFFFF},
      {"more names than bytes", at.names + 2, 2, 0x3FFB},
      {"extra data", at.names + 4, 2, 1},
      {"a name longer than the table", at.names + 6, 2, 0xFFFF},
  };
  for (const auto& c : cases) {
    std::string bytes = whole;
    putNumber(bytes, c.place, c.size, c.number);
    EXPECT_FALSE(namesIn(bytes).has()) << c.what;
  }

  // Chains and trees that lead back to themselves end, and what is in front of the cycle is read.
  std::string cyclic = whole;
  for (std::size_t entry = 1; entry < 7; ++entry) putNumber(cyclic, at.directory + 128 * entry + 68, 4, 1);
  EXPECT_FALSE(namesIn(cyclic).has());
  cyclic = whole;
  putNumber(cyclic, at.documentEntry + 68, 4, 1);
  EXPECT_EQ(namesIn(cyclic).or_({}), expectedNames);
  cyclic = whole;
  for (std::size_t sector = 0; sector < 128; ++sector) putNumber(cyclic, at.miniSectors + 4 * sector, 4, 0);
  EXPECT_FALSE(namesIn(cyclic).has());
  cyclic = whole;
  const std::uint32_t itself = static_cast<std::uint32_t>(at.miniSectors / 512 - 1);
  putNumber(cyclic, 44, 4, 0xFFFFFFFF);
  putNumber(cyclic, 68, 4, itself);
  putNumber(cyclic, at.miniSectors + 508, 4, itself);
  EXPECT_FALSE(namesIn(cyclic).has());

  for (const char* name : {"bookmarks.doc", "many_bookmarks.doc"}) {
    const std::string bytes = readFile(sample(name));
    const Names all = bookmarksOfDocument(sample(name)).or_({});
    std::size_t readable = 0;
    for (std::size_t length = 0; length < bytes.size(); length += 61) {
      const Maybe<Names> names = namesIn(bytes.substr(0, length));
      readable += names.has();
      EXPECT_TRUE(!names || *names == all) << name << " cut at " << length;
    }
    EXPECT_LT(readable, 8u) << name;  // only the last sector can be missing
  }
}

}  // namespace
}  // namespace quorvel::formats::testing
