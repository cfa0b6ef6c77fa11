// English names of the language identifiers that are in use, as the system's own function tells
// them on an English system.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/text.h"
#include "platform/version_resource.h"

namespace quendal::platform {
namespace {

// A language identifier is a primary language (10 bits) and a sublanguage (6 bits above it).

// Primary languages that have no sublanguages but 0 and 1, which have one name.
constexpr std::u16string_view kPlain =
    u"|002 Bulgarian|005 Czech|006 Danish|008 Greek|00B Finnish|00D Hebrew|00E Hungarian|"
    u"00F Icelandic|011 Japanese|012 Korean|015 Polish|017 Romansh|01B Slovak|01C Albanian|"
    u"01E Thai|01F Turkish|021 Indonesian|022 Ukrainian|023 Belarusian|024 Slovenian|"
    u"025 Estonian|026 Latvian|027 Lithuanian|029 Persian|02A Vietnamese|02B Armenian|02D Basque|"
    u"02F Macedonian|030 Southern Sotho|031 Tsonga|033 Venda|034 Xhosa|035 Zulu|036 Afrikaans|"
    u"037 Georgian|038 Faroese|039 Hindi|03A Maltese|03D Yiddish|03F Kazakh|040 Kyrgyz|"
    u"041 Swahili|042 Turkmen|044 Tatar|047 Gujarati|048 Odia|04A Telugu|04B Kannada|"
    u"04C Malayalam|04D Assamese|04E Marathi|04F Sanskrit|052 Welsh|053 Khmer|054 Lao|"
    u"055 Burmese|056 Galician|057 Konkani|058 Manipuri (Bangla)|05A Syriac|05B Sinhala|"
    u"05E Amharic|062 Western Frisian|063 Pashto|064 Filipino|065 Divehi|066 Bini|06A Yoruba|"
    u"06C Northern Sotho|06D Bashkir|06E Luxembourgish|06F Kalaallisut|070 Igbo|"
    u"071 Kanuri (Latin)|072 Oromo|074 Guarani|075 Hawaiian|076 Latin|077 Somali|078 Sichuan Yi|"
    u"07A Mapuche|07C Mohawk|07E Breton|080 Uyghur|081 Maori|082 Occitan|083 Corsican|"
    u"084 Swiss German|085 Yakut|087 Kinyarwanda|088 Wolof|08C Persian|091 Scottish Gaelic|";

// All others, one row for each name: bit n of `sublanguages` stands for sublanguage n.
struct Language {
  std::uint16_t primary;
  std::uint32_t sublanguages;
  std::u16string_view name;
};
// clang-format off
constexpr Language kBySublanguage[] = {
    {0x01, 0x1FFFF, u"Arabic"},
    {0x03, 0x7, u"Catalan"},
    {0x04, 0x40000015, u"Chinese (Simplified)"},
    {0x04, 0x8000002A, u"Chinese (Traditional)"},
    {0x07, 0x3F, u"German"},
    {0x09, 0xFFFFF, u"English"},
    {0x0A, 0xFFFFFF, u"Spanish"},
    {0x0C, 0xFFFF, u"French"},
    {0x10, 0x7, u"Italian"},
    {0x13, 0x7, u"Dutch"},
    {0x14, 0x80000003, u"Norwegian Bokmål"},
    {0x14, 0x40000004, u"Norwegian Nynorsk"},
    {0x16, 0x7, u"Portuguese"},
    {0x18, 0x7, u"Romanian"},
    {0x19, 0x7, u"Russian"},
    {0x1A, 0x13, u"Croatian"},
    {0x1A, 0x44000020, u"Bosnian (Latin)"},
    {0x1A, 0x90000A40, u"Serbian (Latin)"},
    {0x1A, 0x8001480, u"Serbian (Cyrillic)"},
    {0x1A, 0x2000100, u"Bosnian (Cyrillic)"},
    {0x1D, 0x7, u"Swedish"},
    {0x20, 0x7, u"Urdu"},
    {0x28, 0x80000003, u"Tajik (Cyrillic)"},
    {0x2C, 0x40000003, u"Azerbaijani (Latin)"},
    {0x2C, 0x20000004, u"Azerbaijani (Cyrillic)"},
    {0x2E, 0x3, u"Upper Sorbian"},
    {0x2E, 0x80000004, u"Lower Sorbian"},
    {0x32, 0x7, u"Tswana"},
    {0x3B, 0xF, u"Northern Sami"},
    {0x3B, 0x80000030, u"Lule Sami"},
    {0x3B, 0x400000C0, u"Southern Sami"},
    {0x3B, 0x20000100, u"Skolt Sami"},
    {0x3B, 0x10000200, u"Inari Sami"},
    {0x3C, 0x5, u"Irish"},
    {0x3E, 0x7, u"Malay"},
    {0x43, 0x80000003, u"Uzbek (Latin)"},
    {0x43, 0x40000004, u"Uzbek (Cyrillic)"},
    {0x45, 0x7, u"Bangla"},
    {0x46, 0x3, u"Punjabi (Gurmukhi)"},
    {0x46, 0x80000004, u"Punjabi (Arabic)"},
    {0x49, 0x7, u"Tamil"},
    {0x50, 0x40000003, u"Mongolian"},
    {0x50, 0x8000000C, u"Mongolian (Mongolian)"},
    {0x51, 0x3, u"Tibetan"},
    {0x51, 0x8, u"Dzongkha"},
    {0x59, 0x80000005, u"Sindhi (Arabic)"},
    {0x59, 0x2, u"Sindhi (Devanagari)"},
    {0x5C, 0x80000003, u"Cherokee (Cherokee)"},
    {0x5D, 0x80000005, u"Inuktitut (Latin)"},
    {0x5D, 0x40000002, u"Inuktitut (Unified Canadian Aboriginal Syllabics)"},
    {0x5F, 0x80000005, u"Central Atlas Tamazight (Latin)"},
    {0x60, 0x3, u"Kashmiri (Arabic)"},
    {0x60, 0x4, u"Kashmiri (Devanagari)"},
    {0x61, 0x7, u"Nepali"},
    {0x67, 0x80000007, u"Fula (Latin)"},
    {0x68, 0x80000003, u"Hausa (Latin)"},
    {0x6B, 0xF, u"Quechua"},
    {0x73, 0x7, u"Tigrinya"},
    {0x7F, 0x1, u"Invariant Language"},
    {0x86, 0x80000003, u"K'iche' (Latin)"},
    {0x92, 0x80000003, u"Central Kurdish (Arabic)"},
};
// clang-format on

}  // namespace

std::u16string languageName(std::uint16_t language) {
  constexpr unsigned kLastNeutral = 5;  // sublanguages of the neutral language
  const bool isNeutral = language <= kLastNeutral << 10 && (language & 0x3FF) == 0;
  const unsigned primary = isNeutral ? 0x09 : language & 0x3FF;
  const unsigned sublanguage = isNeutral ? 1 : language >> 10;
  for (const Language& entry : kBySublanguage) {
    if (entry.primary == primary && sublanguage < 32 &&
        (entry.sublanguages >> sublanguage & 1) != 0) {
      return std::u16string(entry.name);
    }
  }
  const std::size_t found = kPlain.find(u"|" + hexText(primary, 3) + u" ");
  if (sublanguage > 1 || found == kPlain.npos) return {};
  const std::u16string_view name = kPlain.substr(found + 5);
  return std::u16string(name.substr(0, name.find(u'|')));
}

}  // namespace quendal::platform
