// A page that the script ends without OnEndPage. The logger's objects go with it; what the page
// handed over is left alone, as its engine is gone when the library looks again.
var folder = WScript.Arguments(0) + "\\unended_js";
var logger = new ActiveXObject("QUENDAL_REPORTS_ASP.LOGGING");
function variable(name) { return name == "REMOTE_ADDR" ? "10.0.0.1" : ""; }
logger.OnStartPage({
  Session: {}, Application: {}, Response: {},
  Request: { ServerVariables: variable },
  Server: { MapPath: function () { return folder; } }
});
WScript.Echo(logger.Path.substr(folder.length) + logger.FileName + " " + logger.RemoteIP);
WScript.Echo(String(/ 10\.0\.0\.1 .*left open$/.test(logger.WriteLog(1, "left open"))));
