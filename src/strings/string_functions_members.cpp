// The members of `ClsString`, in slot order.
#include "core/guid.h"
#include "core/members.h"
#include "strings/string_functions.h"

namespace quendal {

template <>
const ClassDescription& describe<StringFunctions>() {
  using S = StringFunctions;
  static const MemberRow rows[] = {
      method<&S::formatDateTime>(u"FormatDateTime", u"A date as text, by a format with # tokens.",
                                 {in(u"varDate"), in(u"szFormat")}),
      method<&S::numberToWords>(u"NumberToWords", u"A whole number in English words.",
                                {in(u"IN_iNumber")}),
      method<&S::htmlEncode>(u"HTMLEncode", u"Text made safe for HTML.", {in(u"IN_szText")}),
      method<&S::urlEncode>(u"URLEncode", u"Text made safe for a query string.",
                            {in(u"IN_szStringToEncode")}),
      method<&S::urlDecode>(u"URLDecode", u"The text of a query string.",
                            {in(u"IN_szStringToDecode")}),
      method<&S::safeSqlString>(u"SafeSQLString", u"Text made safe for an SQL literal.",
                                {in(u"IN_szString")}),
      method<&S::safeFileName>(u"SafeFileName", u"Text made safe for a file name.",
                               {in(u"IN_szString")}),
      method<&S::md5>(u"MD5", u"The MD5 digest of a text.", {in(u"IN_szString")}),
      method<&S::uuid>(u"UUID", u"A new unique identifier."),
      method<&S::isTimeOnly>(u"IsTimeOnly", u"True for a time of day without a date.",
                             {in(u"IN_szValue")}),
      method<&S::isDateOnly>(u"IsDateOnly", u"True for a date without a time of day.",
                             {in(u"IN_szValue")}),
      method<&S::capitalize>(u"Capitalize", u"Each word with a capital, the rest in lower case.",
                             {in(u"IN_szSentence")}),
      method<&S::padLeft>(u"PadLeft", u"A text with fill characters before it.",
                          {in(u"IN_szString"), in(u"IN_szChar"), in(u"IN_iLength")}),
      method<&S::padRight>(u"PadRight", u"A text with fill characters after it.",
                           {in(u"IN_szString"), in(u"IN_szChar"), in(u"IN_iLength")}),
      method<&S::extractFileName>(u"ExtractFileName", u"What follows the last backslash.",
                                  {in(u"IN_szDirectoryAndPath")}),
      method<&S::extractFilePath>(u"ExtractFilePath", u"Everything up to the last backslash.",
                                  {in(u"IN_szDirectoryAndPath")}),
      method<&S::formatFileSize>(u"FormatFileSize", u"A size in bytes, KB, MB or GB.",
                                 {in(u"IN_lSize"), in(u"IN_bAlsoShowBytes")}),
      method<&S::appendToUtf8File>(u"AppendToUTF8File", u"Appends a text to a UTF-8 file.",
                                   {in(u"IN_szFile"), in(u"IN_szText")}),
  };
  static const ClassDescription description({S::kClassName,
                                             u"_ClsString",
                                             guid("5FBC57C5-39A9-4C29-88D3-0F4E0DA1E060"),
                                             guid("312C0575-CE41-49E4-B10A-D0207EA3A7F6"),
                                             {},
                                             u"Text functions."},
                                            rows);
  return description;
}

}  // namespace quendal
