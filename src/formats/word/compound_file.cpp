#include "formats/word/compound_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "formats/word/little_endian.h"

namespace quorvel::formats {
namespace {

// Limits. The tables of sectors take at most a tenth of the file's size in memory.
/// The programs that write these documents save none that is larger.
constexpr std::uint64_t largestFile = 512u << 20;
/// A document has about ten entries for each embedded object; this is enough for some thousand objects. Later entries
/// are not read.
constexpr std::size_t mostEntries = 1u << 16;

// The format's numbers. Its later version with larger sectors is for larger files and not used for documents.
constexpr std::size_t headerBytes = 512, sectorBytes = 512, miniSectorBytes = 64, entryBytes = 128;
constexpr int version = 3, sectorShift = 9, miniSectorShift = 6;
/// Streams that are smaller than this are in mini sectors.
constexpr std::uint64_t miniStreamLimit = 4096;
constexpr std::size_t numbersInSector = sectorBytes / 4, entriesInSector = sectorBytes / entryBytes;

constexpr std::uint32_t endOfChain = 0xFFFFFFFE, noEntry = 0xFFFFFFFF;
constexpr std::size_t tableSectorsInHeader = 109, tableSectorsAt = 76;
constexpr char folderKind = 1, streamKind = 2, rootKind = 5;

using Sectors = std::vector<std::uint32_t>;

}  // namespace

struct CompoundFile::Handle {
  int file = -1;
  std::uint64_t size = 0;
  Sectors next;       ///< the sector that follows each sector
  Sectors nextMini;   ///< the same of mini sectors
  Sectors mini;       ///< the sectors that hold the mini sectors
  Sectors directory;  ///< the sectors that hold the directory
  std::uint32_t topEntry = noEntry;

  ~Handle() {
    if (file >= 0) ::close(file);
  }

  std::size_t sectorCount() const { return static_cast<std::size_t>(size / sectorBytes); }

  /// Puts the bytes at the end of `bytes`.
  bool append(std::uint64_t place, std::size_t count, std::string& bytes) const {
    if (place > size || count > size - place) return false;
    std::size_t at = bytes.size();
    bytes.resize(at + count);
    while (at < bytes.size()) {
      const ssize_t got = ::pread(file, bytes.data() + at, bytes.size() - at, static_cast<off_t>(place));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return false;
      at += static_cast<std::size_t>(got);
      place += static_cast<std::uint64_t>(got);
    }
    return true;
  }

  bool appendFromSector(std::uint32_t sector, std::size_t from, std::size_t count, std::string& bytes) const {
    return append(headerBytes + std::uint64_t(sector) * sectorBytes + from, count, bytes);
  }

  bool appendSectors(const Sectors& sectors, Sectors& numbers) const {
    std::string bytes;
    numbers.reserve(numbers.size() + sectors.size() * numbersInSector);
    for (const std::uint32_t sector : sectors) {
      bytes.clear();
      if (!appendFromSector(sector, 0, sectorBytes, bytes)) return false;
      for (std::size_t at = 0; at < bytes.size(); at += 4) numbers.push_back(word32At(bytes, at));
    }
    return true;
  }

  /// The first `most` sectors of a chain, or all when it has fewer. False when it leaves the table.
  static bool follow(const Sectors& table, std::uint32_t sector, std::size_t most, Sectors& chain) {
    for (; sector != endOfChain && chain.size() < most; sector = table[sector]) {
      if (sector >= table.size()) return false;
      chain.push_back(sector);
    }
    return true;
  }

  bool readTable(const std::string& header);
  bool readDirectory(const std::string& header);
  Maybe<std::string> entry(std::uint32_t number) const;
};

bool CompoundFile::Handle::readTable(const std::string& header) {
  const std::size_t wanted = word32At(header, 44);
  // So many as the file has sectors for, and one for a last sector that is not complete.
  if (wanted > sectorCount() / numbersInSector + 1) return false;
  Sectors tableSectors;
  for (std::size_t i = 0; i < std::min(wanted, tableSectorsInHeader); ++i)
    tableSectors.push_back(word32At(header, tableSectorsAt + 4 * i));
  // The others are in a chain of their own: the last number of each of its sectors is the next sector.
  for (std::uint32_t sector = word32At(header, 68); tableSectors.size() < wanted;) {
    Sectors more;
    if (!appendSectors({sector}, more)) return false;
    sector = more.back();
    more.resize(std::min(more.size() - 1, wanted - tableSectors.size()));
    tableSectors.insert(tableSectors.end(), more.begin(), more.end());
  }
  return appendSectors(tableSectors, next);
}

Maybe<std::string> CompoundFile::Handle::entry(std::uint32_t number) const {
  std::string bytes;
  if (number / entriesInSector >= directory.size() ||
      !appendFromSector(directory[number / entriesInSector], number % entriesInSector * entryBytes, entryBytes, bytes))
    return {};
  return bytes;
}

bool CompoundFile::Handle::readDirectory(const std::string& header) {
  if (!follow(next, word32At(header, 48), mostEntries / entriesInSector, directory)) return false;
  const Maybe<std::string> root = entry(0);
  if (!root || (*root)[66] != rootKind) return false;
  topEntry = word32At(*root, 76);

  // Without mini sectors the streams that need them cannot be read, and the others can.
  Sectors tableSectors;
  const std::size_t bytes = static_cast<std::size_t>(std::min<std::uint64_t>(word32At(*root, 120), size));
  const std::size_t mostTableSectors = bytes / miniSectorBytes / numbersInSector + 1;
  if (!follow(next, word32At(*root, 116), bytes / sectorBytes + 1, mini) ||
      !follow(next, word32At(header, 60), mostTableSectors, tableSectors) || !appendSectors(tableSectors, nextMini))
    nextMini.clear();
  return true;
}

CompoundFile::CompoundFile() : handle_(std::make_unique<Handle>()) {}
CompoundFile::~CompoundFile() = default;

bool CompoundFile::open(const std::string& fileName) {
  handle_ = std::make_unique<Handle>();
  Handle& handle = *handle_;
  // Without O_NONBLOCK, opening a pipe would wait for a writer.
  handle.file = ::open(fileName.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  struct stat status;
  if (handle.file < 0 || ::fstat(handle.file, &status) != 0 || !S_ISREG(status.st_mode)) return false;
  handle.size = static_cast<std::uint64_t>(status.st_size);
  std::string header;
  if (handle.size > largestFile || !handle.append(0, headerBytes, header)) return false;
  if (!header.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") || word16At(header, 26) != version ||
      word16At(header, 30) != sectorShift || word16At(header, 32) != miniSectorShift ||
      word32At(header, 56) != miniStreamLimit)
    return false;
  return handle.readTable(header) && handle.readDirectory(header);
}

Maybe<CompoundFile::Stream> CompoundFile::stream(std::string_view name) const {
  std::string wide;
  for (const char c : name) wide += {c, '\0'};
  wide += {'\0', '\0'};
  // A tree with two links in each entry, sorted by name. All of it is searched, because some programs sort differently.
  const std::size_t entries = handle_->directory.size() * entriesInSector;
  std::vector<bool> isSeen(entries);
  Sectors left{handle_->topEntry};
  while (!left.empty()) {
    const std::uint32_t number = left.back();
    left.pop_back();
    if (number >= entries || isSeen[number]) continue;
    isSeen[number] = true;
    const Maybe<std::string> entry = handle_->entry(number);
    if (!entry) continue;
    const char kind = (*entry)[66];
    if (kind != streamKind && kind != folderKind) continue;
    if (kind == streamKind && word16At(*entry, 64) == wide.size() && entry->starts_with(wide))
      return Stream{word32At(*entry, 116), word32At(*entry, 120)};
    left.push_back(word32At(*entry, 68));
    left.push_back(word32At(*entry, 72));
  }
  return {};
}

bool CompoundFile::read(const Stream& stream, std::size_t from, std::size_t count, std::string& bytes) const {
  bytes.clear();
  // A stream is never larger than the file, which also keeps the sums below small.
  if (stream.size > handle_->size || from > stream.size || count > stream.size - from) return false;
  if (count == 0) return true;
  const bool isMini = stream.size < miniStreamLimit;
  const std::size_t unit = isMini ? miniSectorBytes : sectorBytes;
  const std::size_t first = from / unit, last = (from + count - 1) / unit;
  Sectors chain;
  if (!Handle::follow(isMini ? handle_->nextMini : handle_->next, stream.firstSector, last + 1, chain) ||
      chain.size() <= last)
    return false;
  for (std::size_t i = first; i <= last; ++i) {
    const std::size_t begin = i == first ? from % unit : 0;
    const std::size_t end = std::min(unit, from + count - i * unit);
    std::uint32_t sector = chain[i];
    std::size_t inSector = begin;
    if (isMini) {
      const std::size_t place = std::size_t(sector) * miniSectorBytes;
      if (place / sectorBytes >= handle_->mini.size()) return false;
      sector = handle_->mini[place / sectorBytes];
      inSector += place % sectorBytes;
    }
    if (!handle_->appendFromSector(sector, inSector, end - begin, bytes)) return false;
  }
  return true;
}

}  // namespace quorvel::formats
