#include "strings/md5.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>

namespace quendal::strings {
namespace {

using Word = std::uint32_t;
using State = std::array<Word, 4>;

constexpr std::size_t kBlockSize = 64;
constexpr std::size_t kLengthSize = 8;
constexpr State kStart{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};

constexpr std::array<Word, 64> kSine{
    0xD76AA478, 0xE8C7B756, 0x242070DB, 0xC1BDCEEE, 0xF57C0FAF, 0x4787C62A, 0xA8304613, 0xFD469501,
    0x698098D8, 0x8B44F7AF, 0xFFFF5BB1, 0x895CD7BE, 0x6B901122, 0xFD987193, 0xA679438E, 0x49B40821,
    0xF61E2562, 0xC040B340, 0x265E5A51, 0xE9B6C7AA, 0xD62F105D, 0x02441453, 0xD8A1E681, 0xE7D3FBC8,
    0x21E1CDE6, 0xC33707D6, 0xF4D50D87, 0x455A14ED, 0xA9E3E905, 0xFCEFA3F8, 0x676F02D9, 0x8D2A4C8A,
    0xFFFA3942, 0x8771F681, 0x6D9D6122, 0xFDE5380C, 0xA4BEEA44, 0x4BDECFA9, 0xF6BB4B60, 0xBEBFBC70,
    0x289B7EC6, 0xEAA127FA, 0xD4EF3085, 0x04881D05, 0xD9D4D039, 0xE6DB99E5, 0x1FA27CF8, 0xC4AC5665,
    0xF4292244, 0x432AFF97, 0xAB9423A7, 0xFC93A039, 0x655B59C3, 0x8F0CCC92, 0xFFEFF47D, 0x85845DD1,
    0x6FA87E4F, 0xFE2CE6E0, 0xA3014314, 0x4E0811A1, 0xF7537E82, 0xBD3AF235, 0x2AD7D2BB, 0xEB86D391};
constexpr std::array<std::array<int, 4>, 4> kShifts{
    {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};

Word littleEndian(const unsigned char* bytes) noexcept {
  return Word{bytes[0]} | Word{bytes[1]} << 8 | Word{bytes[2]} << 16 | Word{bytes[3]} << 24;
}

void addBlock(State& state, const unsigned char* block) noexcept {
  auto [a, b, c, d] = state;
  for (std::size_t i = 0; i < kSine.size(); ++i) {
    const std::size_t round = i / 16;
    const Word mixed = round == 0   ? (b & c) | (~b & d)
                       : round == 1 ? (d & b) | (~d & c)
                       : round == 2 ? b ^ c ^ d
                                    : c ^ (b | ~d);
    const std::size_t word = round == 0   ? i
                             : round == 1 ? (5 * i + 1) % 16
                             : round == 2 ? (3 * i + 5) % 16
                                          : 7 * i % 16;
    const Word sum = a + mixed + kSine[i] + littleEndian(block + 4 * word);
    const Word next = b + std::rotl(sum, kShifts[round][i % 4]);
    a = std::exchange(d, std::exchange(c, std::exchange(b, next)));
  }
  const State added{a, b, c, d};
  for (std::size_t i = 0; i < state.size(); ++i) state[i] += added[i];
}

void addBlocks(State& state, const unsigned char* blocks, std::size_t count) noexcept {
  for (; count > 0; --count, blocks += kBlockSize) addBlock(state, blocks);
}

}  // namespace

Md5Digest md5(std::string_view bytes) noexcept {
  State state = kStart;
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  const std::size_t whole = bytes.size() / kBlockSize;
  addBlocks(state, data, whole);

  // The rest, a 1 bit, zeros, and the length in bits at the end of a block.
  std::array<unsigned char, 2 * kBlockSize> tail{};
  const std::size_t rest = bytes.size() % kBlockSize;
  std::copy_n(data + whole * kBlockSize, rest, tail.begin());
  tail[rest] = 0x80;
  const std::size_t tailBlocks = rest + 1 + kLengthSize <= kBlockSize ? 1 : 2;
  const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
  for (std::size_t i = 0; i < kLengthSize; ++i) {
    tail[tailBlocks * kBlockSize - kLengthSize + i] = static_cast<unsigned char>(bits >> 8 * i);
  }
  addBlocks(state, tail.data(), tailBlocks);

  Md5Digest digest;
  for (std::size_t i = 0; i < digest.size(); ++i) {
    digest[i] = static_cast<std::uint8_t>(state[i / 4] >> 8 * (i % 4));
  }
  return digest;
}

std::u16string hexText(const Md5Digest& digest) {
  constexpr std::u16string_view kDigits = u"0123456789abcdef";
  std::u16string text;
  text.reserve(2 * digest.size());
  for (const std::uint8_t byte : digest) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

}  // namespace quendal::strings
