// The same boundary as JScript sees it.
function show(label, step) {
  try {
    WScript.Echo(label + ": " + step());
  } catch (error) {
    WScript.Echo(label + ": error " + (error.number & 0xFFFF) + " " + error.description);
  }
}

var folder = WScript.Arguments(0) + "\\boundary_js\\";
var logger = new ActiveXObject("QUENDAL_REPORTS_ASP.LOGGING");

show("any case", function () { return logger.loglevel; });
show("no file", function () { return logger.WriteLog(2, "x"); });
show("no arguments", function () { return logger.WriteLog(); });
show("null", function () { return logger.SetLogPath(null); });
show("object with toString", function () { return logger.SetLogFile({}); });
logger.SetLogPath(folder);
logger.SetLogFile("BOUNDARY.TXT");
show("undefined text", function () { return logger.WriteLog(2, undefined).length > 30; });
show("Unicode", function () { logger.Unicode = false; return logger.Unicode; });

// A page's objects as this language makes them.
var variables = new ActiveXObject("Scripting.Dictionary");
variables.Add("REMOTE_ADDR", "10.1.2.3");
variables.Add("PATH_TRANSLATED", folder + "none.asp");
var here = folder.slice(0, -1);
logger.OnStartPage({
  Session: {}, Application: {}, Request: { ServerVariables: variables }, Response: {},
  Server: { MapPath: function (path) { return here; } }
});
show("client", function () { return logger.RemoteIP; });
show("in a page", function () { return / 10\.1\.2\.3 page$/.test(logger.WriteLog(2, "page")); });
show("variables", function () { logger.LogServerVariables(); return "told"; });
var error = { number: 91, Source: "Page", description: "Told by the page" };
show("an error", function () { return /Told by the page$/.test(logger.LogMSError(2, error)); });
show("a dictionary", function () { return logger.LogDictionary(variables); });
