// Reader of exported registry files.
#pragma once

#include <string_view>

namespace quendal::platform {

class RegistryQuery;

/// Tells `query` the keys and values of an exported registry file, in the file's order.
///
///   [Software\Example]            a key below the local machine; that hive's name may precede it
///   "Name"="text \"quoted\""      text; `@` is the name of the nameless value
///   "Number"=dword:0000001f       a number
///   "Bytes"=hex:01,02,\           bytes; `\` at a line's end continues it
///     03
///   "Other"=hex(7):61,00,...      bytes of a type by its number; text types are UTF-16 (single
///                                 bytes when the file opens with "REGEDIT4")
///   ; comment
///
/// The file is UTF-8, or UTF-16 with a byte-order mark. Lines of any other form are passed over;
/// values under a malformed or removed (`[-...]`) key are too.
void readRegistryFile(std::string_view file, RegistryQuery& query);

}  // namespace quendal::platform
