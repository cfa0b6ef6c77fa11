// An .asp page as a script: what is between the script delimiters stays as it is, everything else
// is written by number, and each line of the script knows where it came from.
//
//   <p><% For i = 1 To 3 %>      Response.WriteBlock(0)
//   <b><%= i %></b>       -->    For i = 1 To 3
//   <% Next %></p>               Response.WriteBlock(1)
//                                Response.Write( i )
//                                ...
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quendal::host {

enum class Language { VBScript, JScript };

struct SourceLine {
  std::u16string file;
  int line = 1;
};

/// A page that cannot be read or whose script failed, told with the place in the page's own files:
/// "C:\site\page.asp, line 7: message", as UTF-8.
class PageError : public std::runtime_error {
 public:
  PageError(const SourceLine& place, std::u16string_view message);
};

struct PageScript {
  Language language = Language::VBScript;
  std::u16string text;
  std::vector<SourceLine> lines;  // of each line of the text
};

struct ParsedPage {
  unsigned codePage = 0;               // 0 when the page names none
  std::vector<std::u16string> blocks;  // what Response.WriteBlock writes
  /// In the order in which they run: the languages that are not the page's, then the page's.
  std::vector<PageScript> scripts;
};

/// What the parser needs of its surroundings. Each may throw a plain exception, whose text becomes
/// that of a PageError.
struct PageSources {
  /// The file that an include directive means.
  std::function<std::u16string(std::u16string_view name, bool isVirtual,
                               const std::u16string& includedFrom)>
      locate;
  std::function<std::string(const std::u16string& file)> read;
  /// Characters of bytes without a byte-order mark; code page 0 is the system's.
  std::function<std::u16string(std::string_view bytes, unsigned codePage)> decode;
};

/// Parses a page and what it includes. Throws PageError.
[[nodiscard]] ParsedPage parsePage(const std::u16string& file, const PageSources& sources);

}  // namespace quendal::host
