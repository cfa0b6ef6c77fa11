// English names of languages, much as the system's own function tells them on an English system.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/text.h"
#include "platform/version_resource.h"

namespace quendal::platform {
namespace {

// A language identifier is a primary language (10 bits) and a sublanguage (6 bits above it). These
// stand for all sublanguages but those below, also where a few are written in a second script.
constexpr std::u16string_view kNames =
    u"|001 Arabic|002 Bulgarian|003 Catalan|005 Czech|006 Danish|007 German|008 Greek|"
    u"009 English|00A Spanish|00B Finnish|00C French|00D Hebrew|00E Hungarian|00F Icelandic|"
    u"010 Italian|011 Japanese|012 Korean|013 Dutch|015 Polish|016 Portuguese|017 Romansh|"
    u"018 Romanian|019 Russian|01B Slovak|01C Albanian|01D Swedish|01E Thai|01F Turkish|"
    u"020 Urdu|021 Indonesian|022 Ukrainian|023 Belarusian|024 Slovenian|025 Estonian|"
    u"026 Latvian|027 Lithuanian|028 Tajik (Cyrillic)|029 Persian|02A Vietnamese|02B Armenian|"
    u"02C Azerbaijani (Latin)|02D Basque|02E Upper Sorbian|02F Macedonian|030 Southern Sotho|"
    u"031 Tsonga|032 Tswana|033 Venda|034 Xhosa|035 Zulu|036 Afrikaans|037 Georgian|038 Faroese|"
    u"039 Hindi|03A Maltese|03B Northern Sami|03C Irish|03D Yiddish|03E Malay|03F Kazakh|"
    u"040 Kyrgyz|041 Swahili|042 Turkmen|043 Uzbek (Latin)|044 Tatar|045 Bangla|"
    u"046 Punjabi (Gurmukhi)|047 Gujarati|048 Odia|049 Tamil|04A Telugu|04B Kannada|"
    u"04C Malayalam|04D Assamese|04E Marathi|04F Sanskrit|050 Mongolian|051 Tibetan|052 Welsh|"
    u"053 Khmer|054 Lao|055 Burmese|056 Galician|057 Konkani|058 Manipuri (Bangla)|"
    u"059 Sindhi (Arabic)|05A Syriac|05B Sinhala|05C Cherokee (Cherokee)|05D Inuktitut (Latin)|"
    u"05E Amharic|05F Central Atlas Tamazight (Latin)|060 Kashmiri (Arabic)|061 Nepali|"
    u"062 Western Frisian|063 Pashto|064 Filipino|065 Divehi|066 Bini|067 Fula (Latin)|"
    u"068 Hausa (Latin)|06A Yoruba|06B Quechua|06C Northern Sotho|06D Bashkir|06E Luxembourgish|"
    u"06F Kalaallisut|070 Igbo|071 Kanuri (Latin)|072 Oromo|073 Tigrinya|074 Guarani|"
    u"075 Hawaiian|076 Latin|077 Somali|078 Sichuan Yi|07A Mapuche|07C Mohawk|07E Breton|"
    u"07F Invariant Language|080 Uyghur|081 Maori|082 Occitan|083 Corsican|084 Swiss German|"
    u"085 Yakut|086 K'iche' (Latin)|087 Kinyarwanda|088 Wolof|08C Persian|091 Scottish Gaelic|"
    u"092 Central Kurdish (Arabic)|";

// Other languages and scripts: bit n of `sublanguages` stands for sublanguage n.
struct Language {
  std::uint16_t primary;
  std::uint32_t sublanguages;
  std::u16string_view name;
};
constexpr Language kBySublanguage[] = {
    {0x04, 0x40000015, u"Chinese (Simplified)"},
    {0x04, 0x8000002A, u"Chinese (Traditional)"},
    {0x14, 0x80000003, u"Norwegian Bokmål"},
    {0x14, 0x40000004, u"Norwegian Nynorsk"},
    {0x1A, 0x13, u"Croatian"},
    {0x1A, 0x44000020, u"Bosnian (Latin)"},
    {0x1A, 0x90000A40, u"Serbian (Latin)"},
    {0x1A, 0x8001480, u"Serbian (Cyrillic)"},
    {0x1A, 0x2000100, u"Bosnian (Cyrillic)"},
    {0x2E, 0x80000004, u"Lower Sorbian"},
    {0x3B, 0x80000030, u"Lule Sami"},
    {0x3B, 0x400000C0, u"Southern Sami"},
    {0x3B, 0x20000100, u"Skolt Sami"},
    {0x3B, 0x10000200, u"Inari Sami"},
    {0x51, 0x8, u"Dzongkha"},
};

}  // namespace

std::u16string languageName(std::uint16_t language) {
  constexpr unsigned kEnglish = 0x09;
  constexpr unsigned kLastNeutral = 5;  // sublanguages of the neutral language
  unsigned primary = language & 0x3FF;
  const unsigned sublanguage = language >> 10;
  if (primary == 0 && sublanguage <= kLastNeutral) primary = kEnglish;
  for (const Language& entry : kBySublanguage) {
    if (entry.primary == primary && sublanguage < 32 &&
        (entry.sublanguages >> sublanguage & 1) != 0) {
      return std::u16string(entry.name);
    }
  }
  const std::size_t found = kNames.find(u"|" + hexText(primary, 3) + u" ");
  if (found == kNames.npos) return {};
  const std::u16string_view name = kNames.substr(found + 5);
  return std::u16string(name.substr(0, name.find(u'|')));
}

}  // namespace quendal::platform
