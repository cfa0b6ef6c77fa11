// The members of `VersionInfo`, in slot order.
#include "core/guid.h"
#include "core/members.h"
#include "versioninfo/version_info.h"

namespace quendal {

template <>
const ClassDescription& describe<VersionInfo>() {
  using V = VersionInfo;
  using R = versioninfo::VersionRecord;
  using enum VersionString;
  static const MemberRow rows[] = {
      put<&V::setFullPathName>(u"FullPathName", u"Names the file, and reads it.",
                               {in(u"IN_szPath")}),
      get<&V::fullPathName>(u"FullPathName", u"The full path of the file that was read last."),
      get<&V::available>(u"Available", u"True when the file has a version resource."),
      get<&V::text<&R::fileFlags>>(u"FileFlags", u"The flags in words, each followed by a blank."),
      get<&V::text<&R::fileOs>>(u"FileOS", u"The operating system the file was made for."),
      get<&V::text<&R::fileType>>(u"FileType", u"Application, DLL, driver, font, VxD or library."),
      get<&V::text<&R::fileSubtype>>(u"FileSubType", u"The kind of driver or font."),
      get<&V::text<&R::verFile>>(u"VerFile", u"The file version from the fixed record."),
      get<&V::text<&R::verProduct>>(u"VerProduct", u"The product version from the fixed record."),
      get<&V::text<&R::verStructure>>(u"VerStructure", u"The version of the record itself."),
      get<&V::predefinedName>(u"PredefinedName", u"The display name of a string.", {in(u"Which")}),
      get<&V::predefinedValue>(u"PredefinedValue", u"A string by its number.", {in(u"Which")}),
      get<&V::value<Comments>>(u"Comments", u"The file's comments."),
      get<&V::value<CompanyName>>(u"CompanyName", u"The company that made the file."),
      get<&V::value<FileDescription>>(u"FileDescription", u"What the file is, in words for users."),
      get<&V::value<FileVersion>>(u"FileVersion", u"The file's version as its maker writes it."),
      get<&V::value<InternalName>>(u"InternalName", u"The file's internal name."),
      get<&V::value<Language>>(u"Language", u"The name of the first translation's language."),
      get<&V::value<LegalCopyright>>(u"LegalCopyright", u"The copyright notice."),
      get<&V::value<LegalTrademarks>>(u"LegalTrademarks", u"The trademark notice."),
      get<&V::value<OriginalFilename>>(u"OriginalFilename",
                                       u"The file's name before any renaming."),
      get<&V::value<ProductName>>(u"ProductName", u"The product that the file belongs to."),
      get<&V::value<ProductVersion>>(u"ProductVersion",
                                     u"The product's version as its maker writes it."),
      get<&V::value<PrivateBuild>>(u"PrivateBuild", u"What a private build is about."),
      get<&V::value<SpecialBuild>>(u"SpecialBuild", u"How a special build differs."),
      method<&V::refresh>(u"Refresh", u"Reads the file again."),
      method<&V::listFileVersions>(u"V7000_ListFileVersionsAsDictionary",
                                   u"Fills a dictionary with the product version of each file.",
                                   {in(u"IN_szDirectory"), in(u"IN_objDictionary")}),
  };
  static const ClassDescription description({V::kClassName,
                                             u"_VersionInfo",
                                             guid("C17EAB5A-C900-4375-A1A3-9E9BB89B4F95"),
                                             guid("AB0623C3-2DEA-4E89-8834-D8D097AE39B2"),
                                             {},
                                             u"The version resource of a file."},
                                            rows);
  return description;
}

}  // namespace quendal
