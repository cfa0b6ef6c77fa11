// MD5 against OpenSSL's, which the Windows home has no library of.
#include <openssl/evp.h>

#include <array>
#include <string>

#include "bench/row.h"
#include "strings/md5.h"

namespace quendal::bench {

void run() {
  constexpr std::size_t kSize = 16 * 1024 * 1024;
  std::string bytes(kSize, '\0');
  for (std::size_t i = 0; i < kSize; ++i) bytes[i] = static_cast<char>(i * 7919 >> 5);
  const Times times = timesOf(
      1, [&] { return strings::md5(bytes); },
      [&] {
        std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
        EVP_Digest(bytes.data(), kSize, digest.data(), nullptr, EVP_md5(), nullptr);
        return digest;
      });
  // Bytes in a microsecond are megabytes in a second.
  row("md5 16 MB, MB/s (OpenSSL)", kSize / times.ours, kSize / times.peer);
}

}  // namespace quendal::bench
