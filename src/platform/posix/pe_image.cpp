#include "platform/posix/pe_image.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "platform/posix/little_endian.h"

namespace quendal::platform {
namespace {

// Sizes, and offsets inside a structure, as the image format is published.
constexpr std::size_t kDosHeaderSize = 64;
constexpr std::size_t kNewHeaderOffset = 0x3C;
constexpr std::uint16_t kDosSignature = 0x5A4D;     // "MZ"
constexpr std::uint32_t kImageSignature = 0x4550;   // "PE\0\0"
constexpr std::uint16_t kOptionalHeader32 = 0x10B;  // PE32
constexpr std::uint16_t kOptionalHeader64 = 0x20B;  // PE32+
constexpr std::size_t kFileHeaderSize = 24;         // with the signature before it
constexpr std::size_t kSectionCountOffset = 6;
constexpr std::size_t kOptionalHeaderSizeOffset = 20;
constexpr std::size_t kDirectoryCountOffset32 = 92;
constexpr std::size_t kDirectoryCountOffset64 = 108;
constexpr std::size_t kResourceDirectory = 2;
constexpr std::size_t kSectionHeaderSize = 40;
constexpr std::size_t kResourceDirectoryHeaderSize = 16;
constexpr std::size_t kResourceEntrySize = 8;
constexpr std::size_t kResourceDataSize = 16;
constexpr std::uint32_t kHighBit = 0x80000000;  // of an entry's offset: a directory

constexpr std::uint32_t kVersionType = 16;
constexpr std::uint32_t kVersionName = 1;
constexpr std::uint16_t kEnglishUnitedStates = 0x0409;

// Calls `visit` with each record of a table until it answers true. The table is read in pieces, so
// that a lying count costs no more than the file really holds.
template <std::size_t Size, class Visit>
void scanTable(ByteSource& source, std::uint64_t offset, std::size_t count, Visit visit) {
  std::array<std::byte, Size * 32> piece;
  while (count > 0) {
    const std::size_t wanted = std::min(count * Size, piece.size());
    const std::size_t present = source.read(offset, std::span(piece).first(wanted)) / Size;
    for (std::size_t i = 0; i < present; ++i) {
      if (visit(std::span<const std::byte>(piece).subspan(i * Size, Size))) return;
    }
    if (present < wanted / Size) return;
    offset += wanted;
    count -= present;
  }
}

class Image {
 public:
  /// Reads the headers. Nothing when they are not those of an image with resources.
  static std::optional<Image> open(ByteSource& source);

  [[nodiscard]] std::uint32_t resourceAddress() const noexcept { return resourceAddress_; }

  /// Place in the file of what is loaded at a relative address.
  [[nodiscard]] std::optional<std::uint64_t> fileOffset(std::uint32_t address);

 private:
  explicit Image(ByteSource& source) : source_(&source) {}

  ByteSource* source_;
  std::uint64_t sectionTable_ = 0;
  std::size_t sectionCount_ = 0;
  std::uint32_t resourceAddress_ = 0;
};

std::optional<Image> Image::open(ByteSource& source) {
  std::array<std::byte, kDosHeaderSize> dosHeader;
  if (!source.readAll(0, dosHeader) || load16(dosHeader, 0) != kDosSignature) return {};
  const std::uint64_t start = load32(dosHeader, kNewHeaderOffset);

  std::array<std::byte, kFileHeaderSize> fileHeader;
  if (!source.readAll(start, fileHeader) || load32(fileHeader, 0) != kImageSignature) return {};
  const std::uint64_t optionalStart = start + kFileHeaderSize;

  std::array<std::byte, 2> kindBytes;
  if (!source.readAll(optionalStart, kindBytes)) return {};
  const std::uint16_t kind = load16(kindBytes, 0);
  if (kind != kOptionalHeader32 && kind != kOptionalHeader64) return {};
  const std::uint64_t directoryCountStart =
      optionalStart +
      (kind == kOptionalHeader64 ? kDirectoryCountOffset64 : kDirectoryCountOffset32);

  constexpr std::size_t kResourceEntry = 4 + kResourceDirectory * 8;
  std::array<std::byte, kResourceEntry + 8> directories;
  if (!source.readAll(directoryCountStart, directories)) return {};
  if (load32(directories, 0) <= kResourceDirectory) return {};

  Image image(source);
  image.sectionTable_ = optionalStart + load16(fileHeader, kOptionalHeaderSizeOffset);
  image.sectionCount_ = load16(fileHeader, kSectionCountOffset);
  image.resourceAddress_ = load32(directories, kResourceEntry);
  if (image.resourceAddress_ == 0) return {};
  return image;
}

std::optional<std::uint64_t> Image::fileOffset(std::uint32_t address) {
  std::optional<std::uint64_t> offset;
  scanTable<kSectionHeaderSize>(*source_, sectionTable_, sectionCount_, [&](auto header) {
    const std::uint32_t start = load32(header, 12);  // relative to the image, when it is loaded
    const std::uint32_t size = load32(header, 16);   // of the part that the file holds
    if (address < start || address - start >= size) return false;
    offset = std::uint64_t{load32(header, 20)} + (address - start);
    return true;
  });
  return offset;
}

// Place in the file of what the best entry of a resource directory leads to: another directory or
// data. Entries have a number, for which `rank` tells how good they are: the smallest is the best,
// of equal ones the first, and kUnfit is none. Those with a name come before them in the file.
constexpr int kUnfit = 3;

template <class Rank>
std::optional<std::uint64_t> findEntry(ByteSource& source, std::uint64_t root,
                                       std::uint64_t directory, bool isDirectory, Rank rank) {
  std::array<std::byte, kResourceDirectoryHeaderSize> header;
  if (!source.readAll(directory, header)) return {};
  const std::size_t named = load16(header, 12);
  const std::size_t numbered = load16(header, 14);
  std::optional<std::uint64_t> found;
  int best = kUnfit;
  scanTable<kResourceEntrySize>(
      source, directory + kResourceDirectoryHeaderSize + named * kResourceEntrySize, numbered,
      [&](auto entry) {
        const std::uint32_t offset = load32(entry, 4);
        const int its = rank(load32(entry, 0));
        if (its >= best || ((offset & kHighBit) != 0) != isDirectory) return false;
        best = its;
        found = root + (offset & ~kHighBit);
        return best == 0;
      });
  return found;
}

int languageRank(std::uint32_t language) {
  constexpr std::uint32_t kNeutral = 0;
  if (language == kNeutral) return 0;
  return language == kEnglishUnitedStates ? 1 : 2;
}

}  // namespace

std::vector<std::byte> readVersionBlock(ByteSource& source) {
  auto image = Image::open(source);
  if (!image) return {};
  const auto root = image->fileOffset(image->resourceAddress());
  if (!root) return {};
  const auto directory = [&](std::uint64_t in, std::uint32_t id) {
    return findEntry(source, *root, in, true,
                     [id](std::uint32_t number) { return number == id ? 0 : kUnfit; });
  };
  const auto type = directory(*root, kVersionType);
  const auto name = type ? directory(*type, kVersionName) : std::nullopt;
  const auto language = name ? findEntry(source, *root, *name, false, languageRank) : std::nullopt;
  if (!language) return {};

  std::array<std::byte, kResourceDataSize> data;
  if (!source.readAll(*language, data)) return {};
  const auto offset = image->fileOffset(load32(data, 0));
  if (!offset) return {};
  std::vector<std::byte> block(std::min<std::size_t>(load32(data, 4), kLongestVersionBlock));
  block.resize(source.read(*offset, block));
  return block;
}

}  // namespace quendal::platform
