// What the system itself knows of the things that callers look up in a registry.
#pragma once

namespace quendal::platform {

class RegistryQuery;

/// Tells `query` the keys below that it wants to hear of; nothing is read for others.
///
/// - the product name: `PRETTY_NAME` of the OS release file;
/// - installed ODBC drivers: the sections of the driver manager's `odbcinst.ini`, in the folder
///   that `ODBCSYSINI` names or in /etc, each with the text "Installed";
/// - installed runtimes, from `DOTNET_ROOT` and the usual folders: 8.0.11 is the value "11" of
///   the policy key v8.0.
void tellSystemFacts(RegistryQuery& query);

}  // namespace quendal::platform
