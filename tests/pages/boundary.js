// The boundary as JScript sees it, in a page that the script ends without OnEndPage. The logger's
// objects go with it; what the page handed over is left alone, as its engine is gone by then.
function show(label, step) {
  try {
    WScript.Echo(label + ": " + step());
  } catch (error) {
    WScript.Echo(label + ": error " + (error.number & 0xFFFF) + " " + error.description);
  }
}

var logger = new ActiveXObject("QUENDAL_REPORTS_ASP.LOGGING");
show("object with toString", function () { return logger.SetLogFile({}); });

var folder = WScript.Arguments(0) + "\\boundary_js";
var variables = new ActiveXObject("Scripting.Dictionary");
variables.Add("REMOTE_ADDR", "10.1.2.3");
variables.Add("PATH_TRANSLATED", folder + "\\none.asp");
logger.OnStartPage({
  Session: {}, Application: {}, Request: { ServerVariables: variables }, Response: {},
  Server: { MapPath: function () { return folder; } }
});
show("in a page", function () { return / 10\.1\.2\.3 $/.test(logger.WriteLog(2, undefined)); });
show("variables", function () { logger.LogServerVariables(); return "told"; });
var error = { number: 91, Source: "Page", description: "Told by the page" };
show("an error", function () { return /Told by the page$/.test(logger.LogMSError(2, error)); });
