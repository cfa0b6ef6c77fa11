// The members of `LOGGING`, in slot order.
#include "core/guid.h"
#include "core/members.h"
#include "logging/logging.h"

namespace quendal {

template <>
const ClassDescription& describe<Logging>() {
  using L = Logging;
  static constexpr ParameterRow kLevel = in(u"IN_iLogLevel");
  static constexpr ParameterRow kText = optional(u"IN_szLog", EmptyText{});
  static constexpr ParameterRow kRepeat = optional(u"IN_iRepeat", 1);
  static constexpr ParameterRow kOut = optional(u"OUT_szString", EmptyText{});
  static const MemberRow rows[] = {
      method<&L::onStartPage>(u"OnStartPage", u"Takes the page context; called by the page host.",
                              {in(u"IN_objScriptingContext")}),
      method<&L::onEndPage>(u"OnEndPage", u"Gives the page context back; called by the page host."),
      method<&L::classInitialize>(u"Class_Initialize", u"Sets every setting to its default."),
      method<&L::classTerminate>(u"Class_Terminate", u"Releases what the logger holds."),
      get<&L::isAsp>(u"IsASP", u"True once a page host has handed over its context."),
      get<&L::unicode>(u"Unicode", u"True: the log is UTF-16 text; False: text in the code page."),
      put<&L::setUnicode>(u"Unicode", u"Sets the text format for the next entries.",
                          {in(u"IN_bUnicode")}),
      get<&L::logLevel>(u"LogLevel", u"Entries up to this level are written."),
      put<&L::setLogLevel>(u"LogLevel", u"Sets the level; any number will do.",
                           {in(u"IN_iLogLevel")}),
      get<&L::rolloverBytes>(u"RolloverBytes", u"Size at which the log becomes an archive."),
      put<&L::setRolloverBytes>(u"RolloverBytes", u"Sets the size; 0 or less: never.",
                                {in(u"IN_RolloverBytes")}),
      get<&L::path>(u"Path", u"The log folder."),
      get<&L::fileName>(u"FileName", u"The log file's name."),
      get<&L::remoteIp>(u"RemoteIP", u"The client address taken at the start of the page."),
      method<&L::setLogPath>(u"SetLogPath",
                             u"Sets the log folder, creating it; end it with a backslash.",
                             {in(u"IN_szPath")}),
      method<&L::setLogFile>(u"SetLogFile", u"Sets the log file's name.", {in(u"IN_szFile")}),
      get<&L::osInfo>(u"OSInfo", u"The logger's own ClsOSInfo object."),
      get<&L::userName>(u"UserName", u"The account name of the running thread."),
      get<&L::computerName>(u"ComputerName", u"The machine's name."),
      get<&L::pid>(u"PID", u"The process identifier."),
      get<&L::threadId>(u"ThreadID", u"The thread identifier."),
      get<&L::odbcDrivers>(u"ODBCDrivers", u"A fresh dictionary of the installed ODBC drivers."),
      method<&L::writeBox>(u"WriteBox", u"Writes a text in a box. Raises 91 when filtered out.",
                           {kLevel, kText}),
      method<&L::startGroup>(u"StartGroup", u"Writes a bar that opens a group.", {kLevel}),
      method<&L::endGroup>(u"EndGroup", u"Writes a bar that closes a group.", {kLevel}),
      method<&L::writeLog>(u"WriteLog", u"Writes an entry.",
                           {kLevel, kText, kRepeat, optional(u"OUT_szLogStamp", EmptyText{})}),
      method<&L::writeParam>(u"WriteParam", u"Writes a name and a value, aligned.",
                             {kLevel, in(u"IN_szParam"), in(u"IN_szValue"),
                              optional(u"IN_lDistance", 35), optional(u"IN_lIndent", 4)}),
      method<&L::dump>(u"Dump", u"Writes a text of several lines in a group of its own.",
                       {kLevel, optional(u"IN_szMultiline", EmptyText{}),
                        optional(u"IN_szTitle", L::kDumpTitle)}),
      method<&L::writeError>(u"WriteError", u"Writes an entry marked as an error.",
                             {kLevel, kText, kRepeat}),
      method<&L::logMsError>(u"LogMSError", u"Writes what a script's error object tells.",
                             {kLevel, in(u"IN_objError"), kText, kRepeat}),
      method<&L::logXmlError>(u"LogXMLError", u"Writes what an XML document's parser error tells.",
                              {kLevel, in(u"IN_objXML"), kText, kRepeat}),
      method<&L::catchError>(u"Catch",
                             u"Writes an error object if the library has a pending error.",
                             {in(u"IN_objError"), kText, kRepeat}),
      method<&L::writeAspStart>(u"WriteASPStart", u"Marks the start of a page's run."),
      method<&L::writeAspEnd>(u"WriteASPEnd", u"Marks the end of a page's run."),
      method<&L::logOsInfo>(u"LogOSInfo", u"Reports the special folders.", {kOut}),
      method<&L::logFileVersionInfo>(u"LogFileVersionInfo",
                                     u"Reports the product versions of a folder's files.",
                                     {in(u"IN_szDirectory"), kOut}),
      method<&L::logDictionary>(
          u"LogDictionary", u"Reports a dictionary, nested ones indented.",
          {in(u"IN_objDictionary"), optional(u"IN_szTitle", u"LogDictionary: Dictionary"),
           optional(u"IN_lLevel", 1), kOut}),
      method<&L::logServerVariables>(u"LogServerVariables",
                                     u"Reports the request's server variables.", {kOut}),
      method<&L::logWebApplicationDllInfo>(u"LogWebApplicationDLLInfo",
                                           u"Reports the files beside the library.", {kOut}),
      method<&L::logOdbcDrivers>(u"LogODBCDrivers", u"Reports the ODBC drivers.", {kOut}),
      method<&L::logConfiguration>(u"LogConfiguration", u"Reports the logger's settings.", {kOut}),
      method<&L::logSystemInfo>(u"LogSystemInfo",
                                u"Reports the operating system and the library's version.", {kOut}),
      method<&L::logDiagnostics>(u"LogDiagnostics", u"Writes all reports on the server.", {kOut}),
  };
  static const ClassDescription description(
      {L::kClassName, u"_LOGGING", guid("BEB8AD95-C69C-4BA7-8279-2097E458CA71"),
       guid("A3062716-388D-4CE1-8E69-9EDDBAC25FBC"), u"QUENDAL_REPORTS_ASP.LOGGING",
       u"A diagnostic log writer."},
      rows);
  return description;
}

}  // namespace quendal
