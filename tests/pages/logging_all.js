// Calls every member of LOGGING as a page does and prints what each returned; logging_all.vbs
// shows the log as well.
// Argument: the folder to write into; it gets a new folder of this page's own. In what is printed a
// stamp is "@" at the start of a line, and a line end of the text is "|".
//
// A script in this language gives the library no variables, only values: texts that the library
// hands back through a parameter do not arrive.
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = WScript.Arguments(0) + "\\logging_js";
if (files.FolderExists(folder)) files.DeleteFolder(folder);
files.CreateFolder(folder);

function dictionaryOf(pairs) {
  var dictionary = new ActiveXObject("Scripting.Dictionary");
  for (var name in pairs) dictionary.Add(name, pairs[name]);
  return dictionary;
}

var context = {
  Session: {},
  Application: {},
  Request: {
    ServerVariables: dictionaryOf({
      ALL_RAW: "User-Agent: Browser/1.0",
      REMOTE_ADDR: "10.1.2.3",
      PATH_TRANSLATED: folder + "\\Page.asp",
      REQUEST_METHOD: "post",
      HTTP_USER_AGENT: "Browser/1.0",
      URL: "/Page.asp",
      QUERY_STRING: "a=1&b=2"
    })
  },
  Response: {},
  Server: { MapPath: function (path) { return folder; } }
};

var stamp = /\n?\d\d \S+ \d{4} \d\d:\d\d:\d\d\.\d{3} \S* \S* \d+ /g;
function printText(text) {
  text = String(text).split(folder).join("<here>").split("\r\n").join("|\n");
  var lines = text.replace(stamp, "\n@").split("\n");
  for (var i = 0; i < lines.length; ++i)
    if (lines[i] != "") WScript.Echo(lines[i]);
}

function show(member, result) {
  WScript.Echo("== " + member);
  printText(result);
}

// A call that raises shows its number and description.
function raised(call) {
  try {
    return call();
  } catch (error) {
    return (error.number & 0xFFFF) + " " + error.message;
  }
}

files.CreateTextFile(folder + "\\Page.asp").Close();
var log = new ActiveXObject("QUENDAL_REPORTS_ASP.LOGGING");
log.OnStartPage(context);

show("IsASP", log.IsASP);
show("Path", log.Path);
show("FileName", log.FileName);
show("RemoteIP", log.RemoteIP);
show("LogLevel", log.LogLevel);
show("RolloverBytes", log.RolloverBytes);
show("Unicode", log.Unicode);
show("OSInfo", log.OSInfo == log.OSInfo);
show("ODBCDrivers", log.ODBCDrivers.Count >= 0);
show("UserName, ComputerName, PID, ThreadID", typeof log.UserName + " " +
  typeof log.ComputerName + " " + typeof log.PID + " " + typeof log.ThreadID);

show("WriteASPStart", log.WriteASPStart());
show("WriteLog", log.WriteLog(2, "Hello", 2));
show("WriteLog, values", log.WriteLog(2, 12.5) + log.WriteLog(2, true) + log.WriteLog(2, null));
show("WriteLog, filtered out", log.WriteLog(3, "unseen"));
log.LogLevel = 3;
show("WriteLog, no longer", log.WriteLog(3, "seen"));
log.LogLevel = 2;
show("WriteBox", log.WriteBox(2, "A text in a box!"));
show("WriteBox, filtered out", raised(function () { return log.WriteBox(3, "unseen"); }));
var error = { number: 91, Source: "Page", description: "Told by the page" };
show("Catch", log.Catch(error, "caught"));
show("Catch, nothing pending", log.Catch(error));
show("LogMSError", log.LogMSError(2, error, "logged", 2));
show("LogMSError, without a source", raised(function () { return log.LogMSError(2, new Error()); }));
show("StartGroup", log.StartGroup(2) + log.StartGroup(2));
show("WriteParam", log.WriteParam(2, "Name", "value", 10, 0));
show("EndGroup", log.EndGroup(2) + log.EndGroup(2));
show("Dump", log.Dump(2, "a\r\nb", "Title"));
show("WriteError", log.WriteError(2, "wrong"));
var parsed = { parseError: { errorCode: 0 } };
show("LogXMLError, none", log.LogXMLError(2, parsed, "unseen"));
parsed.parseError = { errorCode: -1072896659, url: null, line: 2, linepos: 14, reason: "No end.",
                      srcText: "<b>" };
show("LogXMLError", log.LogXMLError(2, parsed));

show("LogConfiguration", log.LogConfiguration());
show("LogSystemInfo", log.LogSystemInfo());
show("LogODBCDrivers", log.LogODBCDrivers(""));
show("LogServerVariables", log.LogServerVariables());
show("LogFileVersionInfo", log.LogFileVersionInfo(folder + "\\none"));
show("LogWebApplicationDLLInfo", log.LogWebApplicationDLLInfo());
show("LogOSInfo", log.LogOSInfo());
var inner = dictionaryOf({ flag: true });
show("LogDictionary", log.LogDictionary(dictionaryOf({ text: "value", inner: inner }), "Title"));
inner.Add("itself", inner);
show("LogDictionary, nested in itself",
     raised(function () { return log.LogDictionary(inner, "Endless"); }));
inner.RemoveAll();
show("LogDiagnostics", log.LogDiagnostics());

show("WriteASPEnd", log.WriteASPEnd());
log.OnEndPage();
show("after OnEndPage", raised(function () { return log.WriteLog(2, "after the page"); }));
log.Class_Initialize();
log.Unicode = false;
log.RolloverBytes = 100000;
log.SetLogPath(folder + "\\");
log.SetLogFile("Third.txt");
log.WriteLog(2, "in the code page");
show("Class_Initialize", log.IsASP);
log.Class_Terminate();
show("Class_Terminate", log.OSInfo == null);
WScript.Echo("== THE SECOND LOG");
var text = files.OpenTextFile(folder + "\\Third.txt").ReadAll();
printText(text.substr(text.indexOf("in the code page")));
