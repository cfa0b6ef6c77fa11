// English names of the language identifiers that are in use, as the system's own function tells
// them on an English system.
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/version_resource.h"

namespace quendal::platform {
namespace {

// A language identifier is a primary language (10 bits) and a sublanguage (6 bits above it). One
// row for each name: bit n of `sublanguages` stands for sublanguage n.
struct Language {
  std::uint16_t primary;
  std::uint32_t sublanguages;
  std::u16string_view name;
};

// clang-format off
constexpr Language kLanguages[] = {
    {0x01, 0x1FFFF, u"Arabic"},
    {0x02, 0x3, u"Bulgarian"},
    {0x03, 0x7, u"Catalan"},
    {0x04, 0x40000015, u"Chinese (Simplified)"},
    {0x04, 0x8000002A, u"Chinese (Traditional)"},
    {0x05, 0x3, u"Czech"},
    {0x06, 0x3, u"Danish"},
    {0x07, 0x3F, u"German"},
    {0x08, 0x3, u"Greek"},
    {0x09, 0xFFFFF, u"English"},
    {0x0A, 0xFFFFFF, u"Spanish"},
    {0x0B, 0x3, u"Finnish"},
    {0x0C, 0xFFFF, u"French"},
    {0x0D, 0x3, u"Hebrew"},
    {0x0E, 0x3, u"Hungarian"},
    {0x0F, 0x3, u"Icelandic"},
    {0x10, 0x7, u"Italian"},
    {0x11, 0x3, u"Japanese"},
    {0x12, 0x3, u"Korean"},
    {0x13, 0x7, u"Dutch"},
    {0x14, 0x80000003, u"Norwegian Bokmål"},
    {0x14, 0x40000004, u"Norwegian Nynorsk"},
    {0x15, 0x3, u"Polish"},
    {0x16, 0x7, u"Portuguese"},
    {0x17, 0x3, u"Romansh"},
    {0x18, 0x7, u"Romanian"},
    {0x19, 0x7, u"Russian"},
    {0x1A, 0x13, u"Croatian"},
    {0x1A, 0x44000020, u"Bosnian (Latin)"},
    {0x1A, 0x90000A40, u"Serbian (Latin)"},
    {0x1A, 0x8001480, u"Serbian (Cyrillic)"},
    {0x1A, 0x2000100, u"Bosnian (Cyrillic)"},
    {0x1B, 0x3, u"Slovak"},
    {0x1C, 0x3, u"Albanian"},
    {0x1D, 0x7, u"Swedish"},
    {0x1E, 0x3, u"Thai"},
    {0x1F, 0x3, u"Turkish"},
    {0x20, 0x7, u"Urdu"},
    {0x21, 0x3, u"Indonesian"},
    {0x22, 0x3, u"Ukrainian"},
    {0x23, 0x3, u"Belarusian"},
    {0x24, 0x3, u"Slovenian"},
    {0x25, 0x3, u"Estonian"},
    {0x26, 0x3, u"Latvian"},
    {0x27, 0x3, u"Lithuanian"},
    {0x28, 0x80000003, u"Tajik (Cyrillic)"},
    {0x29, 0x3, u"Persian"},
    {0x2A, 0x3, u"Vietnamese"},
    {0x2B, 0x3, u"Armenian"},
    {0x2C, 0x40000003, u"Azerbaijani (Latin)"},
    {0x2C, 0x20000004, u"Azerbaijani (Cyrillic)"},
    {0x2D, 0x3, u"Basque"},
    {0x2E, 0x3, u"Upper Sorbian"},
    {0x2E, 0x80000004, u"Lower Sorbian"},
    {0x2F, 0x3, u"Macedonian"},
    {0x30, 0x3, u"Southern Sotho"},
    {0x31, 0x3, u"Tsonga"},
    {0x32, 0x7, u"Tswana"},
    {0x33, 0x3, u"Venda"},
    {0x34, 0x3, u"Xhosa"},
    {0x35, 0x3, u"Zulu"},
    {0x36, 0x3, u"Afrikaans"},
    {0x37, 0x3, u"Georgian"},
    {0x38, 0x3, u"Faroese"},
    {0x39, 0x3, u"Hindi"},
    {0x3A, 0x3, u"Maltese"},
    {0x3B, 0xF, u"Northern Sami"},
    {0x3B, 0x80000030, u"Lule Sami"},
    {0x3B, 0x400000C0, u"Southern Sami"},
    {0x3B, 0x20000100, u"Skolt Sami"},
    {0x3B, 0x10000200, u"Inari Sami"},
    {0x3C, 0x5, u"Irish"},
    {0x3D, 0x3, u"Yiddish"},
    {0x3E, 0x7, u"Malay"},
    {0x3F, 0x3, u"Kazakh"},
    {0x40, 0x3, u"Kyrgyz"},
    {0x41, 0x3, u"Swahili"},
    {0x42, 0x3, u"Turkmen"},
    {0x43, 0x80000003, u"Uzbek (Latin)"},
    {0x43, 0x40000004, u"Uzbek (Cyrillic)"},
    {0x44, 0x3, u"Tatar"},
    {0x45, 0x7, u"Bangla"},
    {0x46, 0x3, u"Punjabi (Gurmukhi)"},
    {0x46, 0x80000004, u"Punjabi (Arabic)"},
    {0x47, 0x3, u"Gujarati"},
    {0x48, 0x3, u"Odia"},
    {0x49, 0x7, u"Tamil"},
    {0x4A, 0x3, u"Telugu"},
    {0x4B, 0x3, u"Kannada"},
    {0x4C, 0x3, u"Malayalam"},
    {0x4D, 0x3, u"Assamese"},
    {0x4E, 0x3, u"Marathi"},
    {0x4F, 0x3, u"Sanskrit"},
    {0x50, 0x40000003, u"Mongolian"},
    {0x50, 0x8000000C, u"Mongolian (Mongolian)"},
    {0x51, 0x3, u"Tibetan"},
    {0x51, 0x8, u"Dzongkha"},
    {0x52, 0x3, u"Welsh"},
    {0x53, 0x3, u"Khmer"},
    {0x54, 0x3, u"Lao"},
    {0x55, 0x3, u"Burmese"},
    {0x56, 0x3, u"Galician"},
    {0x57, 0x3, u"Konkani"},
    {0x58, 0x3, u"Manipuri (Bangla)"},
    {0x59, 0x80000005, u"Sindhi (Arabic)"},
    {0x59, 0x2, u"Sindhi (Devanagari)"},
    {0x5A, 0x3, u"Syriac"},
    {0x5B, 0x3, u"Sinhala"},
    {0x5C, 0x80000003, u"Cherokee (Cherokee)"},
    {0x5D, 0x80000005, u"Inuktitut (Latin)"},
    {0x5D, 0x40000002, u"Inuktitut (Unified Canadian Aboriginal Syllabics)"},
    {0x5E, 0x3, u"Amharic"},
    {0x5F, 0x80000005, u"Central Atlas Tamazight (Latin)"},
    {0x60, 0x3, u"Kashmiri (Arabic)"},
    {0x60, 0x4, u"Kashmiri (Devanagari)"},
    {0x61, 0x7, u"Nepali"},
    {0x62, 0x3, u"Western Frisian"},
    {0x63, 0x3, u"Pashto"},
    {0x64, 0x3, u"Filipino"},
    {0x65, 0x3, u"Divehi"},
    {0x66, 0x3, u"Bini"},
    {0x67, 0x80000007, u"Fula (Latin)"},
    {0x68, 0x80000003, u"Hausa (Latin)"},
    {0x6A, 0x3, u"Yoruba"},
    {0x6B, 0xF, u"Quechua"},
    {0x6C, 0x3, u"Northern Sotho"},
    {0x6D, 0x3, u"Bashkir"},
    {0x6E, 0x3, u"Luxembourgish"},
    {0x6F, 0x3, u"Kalaallisut"},
    {0x70, 0x3, u"Igbo"},
    {0x71, 0x3, u"Kanuri (Latin)"},
    {0x72, 0x3, u"Oromo"},
    {0x73, 0x7, u"Tigrinya"},
    {0x74, 0x3, u"Guarani"},
    {0x75, 0x3, u"Hawaiian"},
    {0x76, 0x3, u"Latin"},
    {0x77, 0x3, u"Somali"},
    {0x78, 0x3, u"Sichuan Yi"},
    {0x7A, 0x3, u"Mapuche"},
    {0x7C, 0x3, u"Mohawk"},
    {0x7E, 0x3, u"Breton"},
    {0x7F, 0x1, u"Invariant Language"},
    {0x80, 0x3, u"Uyghur"},
    {0x81, 0x3, u"Maori"},
    {0x82, 0x3, u"Occitan"},
    {0x83, 0x3, u"Corsican"},
    {0x84, 0x3, u"Swiss German"},
    {0x85, 0x3, u"Yakut"},
    {0x86, 0x80000003, u"K'iche' (Latin)"},
    {0x87, 0x3, u"Kinyarwanda"},
    {0x88, 0x3, u"Wolof"},
    {0x8C, 0x3, u"Persian"},
    {0x91, 0x3, u"Scottish Gaelic"},
    {0x92, 0x80000003, u"Central Kurdish (Arabic)"},
};
// clang-format on

}  // namespace

std::u16string languageName(std::uint16_t language) {
  constexpr unsigned kLastNeutral = 5;  // sublanguages of the neutral language
  unsigned primary = language & 0x3FF;
  unsigned sublanguage = language >> 10;
  if (primary == 0 && sublanguage <= kLastNeutral) {
    primary = 0x09;
    sublanguage = 1;
  }
  if (sublanguage >= 32) return {};
  for (const Language& entry : kLanguages) {
    if (entry.primary == primary && (entry.sublanguages >> sublanguage & 1) != 0) {
      return std::u16string(entry.name);
    }
  }
  return {};
}

}  // namespace quendal::platform
