#include "formats/package/zip_package.h"

#include <zip.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <unordered_map>

#include "formats/package/part_name.h"
#include "formats/package/xml_measure.h"

namespace quorvel::formats {
namespace {

constexpr std::string_view chooseDrawing = "choose a .vsdx, .vssx or .vstx file";

struct Closer {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};

/// The first bytes of a file decide what it is, whatever its name is.
std::string firstBytes(const std::string& fileName, std::size_t count) {
  std::ifstream file(fileName, std::ios::binary);
  std::string bytes(count, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(count));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

/// Office programs put an encrypted package into the compound file that also held the old binary drawings; a stream of
/// this name distinguishes the two.
bool holdsEncryptedPackage(const std::string& fileName) {
  std::string wide;
  for (const char c : std::string_view("EncryptedPackage")) wide += {c, '\0'};
  return firstBytes(fileName, 32u << 20).find(wide) != std::string::npos;
}

std::string whatItIsInstead(const std::string& fileName) {
  const std::string start = firstBytes(fileName, 512);
  if (start.empty()) return "is empty; choose another file or take its copy from a backup";
  if (start.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1")) {
    if (holdsEncryptedPackage(fileName))
      return "is encrypted; open it with its password in the program that made it and save it without one";
    return "is in the old binary format (.vsd), which cannot be read; open it in a program that can and save it as "
           ".vsdx";
  }
  if (start.starts_with("PK\x03\x04"))
    return "is damaged or was cut short: the directory at its end is missing; copy or download it again";
  const std::size_t text = start.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  if (text != std::string::npos && start[text] == '<' && start.find("VisioDocument") != std::string::npos)
    return "is an XML drawing of an older release; end its name with .vdx";
  return "is not a drawing: it is no zip package; " + std::string(chooseDrawing);
}

}  // namespace

struct ZipPackage::Handle {
  std::unique_ptr<zip_t, Closer> archive;
  struct Entry {
    zip_uint64_t index = 0;
    zip_uint64_t size = 0;
    zip_uint64_t packedSize = 0;
    zip_uint32_t checksum = 0;
    bool isDeflated = false;
  };
  std::unordered_map<std::string, Entry> entries;  ///< by part key
};

ZipPackage::ZipPackage() : handle_(std::make_unique<Handle>()) {}
ZipPackage::~ZipPackage() = default;

std::string ZipPackage::open(const std::string& fileName, const PackageLimits& limits) {
  std::error_code ignored;
  const auto status = std::filesystem::status(fileName, ignored);
  if (!std::filesystem::exists(status)) return "does not exist; check the name and the folder";
  if (std::filesystem::is_directory(status)) return "is a folder, not a drawing; " + std::string(chooseDrawing);
  if (!std::filesystem::is_regular_file(status)) return "is no regular file; " + std::string(chooseDrawing);
  if (!std::ifstream(fileName, std::ios::binary)) return "may not be read; check its permissions";

  int error = 0;
  handle_->archive.reset(zip_open(fileName.c_str(), ZIP_RDONLY, &error));
  if (!handle_->archive) return whatItIsInstead(fileName);

  zip_t* archive = handle_->archive.get();
  const zip_int64_t count = zip_get_num_entries(archive, 0);
  if (static_cast<zip_uint64_t>(count) > limits.entries)
    return "holds more than " + std::to_string(limits.entries) +
           " parts, which no drawing does; do not open it if you do not trust its sender";

  limits_ = limits;
  fileBytes_ = std::filesystem::file_size(fileName, ignored);
  constexpr zip_uint64_t needed = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC;
  zip_uint64_t total = 0, packedTotal = 0;
  for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(count); ++index) {
    zip_stat_t entry;
    if (zip_stat_index(archive, index, 0, &entry) != 0 || (entry.valid & needed) != needed)
      return "is damaged: part " + std::to_string(index + 1) + " cannot be read; copy or download it again";
    std::string name = entry.name;
    if (name.starts_with('/')) name.erase(0, 1);
    if (name.ends_with('/')) continue;  // a folder holds nothing
    if (!isSafePartName(name)) return "names a part outside of itself; do not open it if you do not trust its sender";
    if ((entry.valid & ZIP_STAT_ENCRYPTION_METHOD) && entry.encryption_method != ZIP_EM_NONE)
      return "is protected with a password; unpack it or save it without one";
    const bool isStored = (entry.valid & ZIP_STAT_COMP_METHOD) && entry.comp_method == ZIP_CM_STORE;
    if (!isStored && entry.comp_method != ZIP_CM_DEFLATE)
      return "is packed in a way that drawings are not; unpack it and save it again in the program that made it";
    // What the directory says is only good for a quick refusal; what counts is measured while parts are unpacked.
    if (entry.size > limits.partBytes || entry.size > limits.totalBytes - total) return std::string(isPastLimits);
    total += entry.size;
    if (entry.comp_size > fileBytes_ - packedTotal)
      return "is damaged: its parts lie on top of each other; do not open it if you do not trust its sender";
    packedTotal += entry.comp_size;
    name.insert(0, "/");
    if (!handle_->entries
             .try_emplace(partKey(name), Handle::Entry{index, entry.size, entry.comp_size, entry.crc, !isStored})
             .second)
      return "is damaged: it holds the part " + name + " twice; save it again in the program that made it";
    names_.push_back(std::move(name));
  }
  return {};
}

bool ZipPackage::has(std::string_view part) const { return handle_->entries.contains(partKey(part)); }

bool ZipPackage::take(std::string_view part, std::string* plain, PackedBytes* packed) const {
  const auto found = handle_->entries.find(partKey(part));
  if (found == handle_->entries.end() || isPastLimit_) return false;
  const Handle::Entry& entry = found->second;
  zip_file_t* file = zip_fopen_index(handle_->archive.get(), entry.index, ZIP_FL_COMPRESSED);
  if (!file) return false;
  std::string held(entry.packedSize, '\0');
  std::size_t filled = 0;
  zip_int64_t got = 0;
  while (filled < held.size() && (got = zip_fread(file, held.data() + filled, held.size() - filled)) > 0)
    filled += static_cast<std::size_t>(got);
  if (zip_fclose(file) != 0 || filled != held.size()) return false;

  const std::uint64_t limit = std::min(limits_.partBytes, limits_.totalBytes - unpacked_);
  Unpacking result{true, held.size() > limit, held.size(), 0};
  if (entry.isDeflated) {
    result = unpack(held, limit, plain);
  } else {
    result.checksum = checksumOf(held);
  }
  isPastLimit_ = result.isTooLong;
  if (result.isTooLong) return false;
  unpacked_ += result.size;
  if (!result.isWhole || result.size != entry.size || result.checksum != entry.checksum) return false;
  if (packed) {
    *packed =
        entry.isDeflated ? PackedBytes(std::move(held), result.size, result.checksum) : PackedBytes(std::move(held));
  } else if (!entry.isDeflated) {
    *plain = std::move(held);
  }
  return true;
}

bool ZipPackage::read(std::string_view part, std::string& bytes) const {
  bytes.clear();
  const bool isWhole = take(part, &bytes, nullptr);
  if (!isWhole) bytes = {};
  return isWhole;
}

bool ZipPackage::readXml(std::string_view part, std::string& bytes) const {
  if (!read(part, bytes)) return false;
  xmlWeight_ += measureXml(bytes).weight;
  isPastLimit_ = xmlWeight_ > limits_.xmlWeight + limits_.xmlWeightPerByte * fileBytes_;
  if (isPastLimit_) bytes = {};
  return !isPastLimit_;
}

bool ZipPackage::readPacked(std::string_view part, PackedBytes& bytes) const { return take(part, nullptr, &bytes); }

namespace {

/// A source of bytes that are packed already.
zip_source_t* sourceOf(zip_t* archive, const ZipEntry& entry) {
  if (!entry.packed) return zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0);
  const std::string& held = entry.packed->held();
  if (!entry.packed->isDeflated()) return zip_source_buffer(archive, held.data(), held.size(), 0);
  struct Reading {
    const PackedBytes* bytes;
    std::size_t at;
    zip_error_t error;
  };
  const auto answer = [](void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) -> zip_int64_t {
    Reading& reading = *static_cast<Reading*>(state);
    const std::string& all = reading.bytes->held();
    switch (command) {
      case ZIP_SOURCE_OPEN:
        reading.at = 0;
        return 0;
      case ZIP_SOURCE_READ: {
        const std::size_t count = std::min<std::size_t>(length, all.size() - reading.at);
        std::copy_n(all.data() + reading.at, count, static_cast<char*>(data));
        reading.at += count;
        return static_cast<zip_int64_t>(count);
      }
      case ZIP_SOURCE_CLOSE:
        return 0;
      case ZIP_SOURCE_STAT: {
        zip_stat_t& stat = *static_cast<zip_stat_t*>(data);
        zip_stat_init(&stat);
        stat.valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
        stat.size = reading.bytes->size();
        stat.comp_size = all.size();
        stat.comp_method = ZIP_CM_DEFLATE;
        stat.crc = reading.bytes->checksum();
        return static_cast<zip_int64_t>(sizeof stat);
      }
      case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&reading.error, data, length);
      case ZIP_SOURCE_FREE:
        delete &reading;
        return 0;
      case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
      default:
        zip_error_set(&reading.error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
  };
  auto reading = std::make_unique<Reading>(Reading{entry.packed, 0, {}});
  zip_error_init(&reading->error);
  zip_source_t* source = zip_source_function(archive, answer, reading.get());
  if (source) reading.release();
  return source;
}

}  // namespace

std::string makeZip(const std::vector<ZipEntry>& entries, bool packed) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, &error);
  if (!target) return {};
  zip_source_keep(target);  // stays ours behind zip_close, to read the result from
  zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
  if (!archive) {
    zip_source_free(target);
    zip_source_free(target);
    return {};
  }
  bool good = true;
  for (const ZipEntry& entry : entries) {
    zip_source_t* source = sourceOf(archive, entry);
    const zip_int64_t index = source ? zip_file_add(archive, entry.name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index < 0) {
      if (source) zip_source_free(source);
      good = false;
      break;
    }
    constexpr zip_uint16_t firstDay = (1 << 5) | 1;  // 1980-01-01, the earliest that a zip can say
    // Large parts are XML full of repetition: the quickest level packs them nearly as well in a third of the time.
    const zip_uint32_t level = entry.bytes.size() > (4u << 20) ? 1 : 6;
    const bool asItIs = entry.packed && entry.packed->isDeflated();
    const zip_int32_t method = asItIs ? ZIP_CM_DEFAULT : packed ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
    good =
        zip_file_set_dostime(archive, static_cast<zip_uint64_t>(index), 0, firstDay, 0) == 0 &&
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), method, packed && !asItIs ? level : 0) == 0;
    if (!good) break;
  }
  if (!good || zip_close(archive) != 0) {
    zip_discard(archive);
    zip_source_free(target);
    return {};
  }
  std::string bytes;
  zip_stat_t size;
  zip_source_stat(target, &size);
  if (zip_source_open(target) == 0) {
    bytes.resize(size.size);
    const zip_int64_t got = zip_source_read(target, bytes.data(), bytes.size());
    if (got < 0 || static_cast<zip_uint64_t>(got) != size.size) bytes.clear();
    zip_source_close(target);
  }
  zip_source_free(target);
  return bytes;
}

}  // namespace quorvel::formats
